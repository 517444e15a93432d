# JQ_SANITIZE=address;undefined builds everything with these sanitizers; a finding
# ends the program, so that a test cannot pass over it.
if(JQ_SANITIZE AND MSVC)
  list(JOIN JQ_SANITIZE "," _sanitizers)
  add_compile_options(/fsanitize=${_sanitizers})
elseif(JQ_SANITIZE)
  list(JOIN JQ_SANITIZE "," _sanitizers)
  add_compile_options(-fsanitize=${_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${_sanitizers})
  # GCC then sees uninitialised values in the standard library's regular expressions.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

# Fuzzers see which branches of the library an input takes.
if(JQ_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "JQ_BUILD_FUZZERS needs clang, not ${CMAKE_CXX_COMPILER_ID}")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
