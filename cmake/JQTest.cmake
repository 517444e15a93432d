# jq_add_test(NAME SOURCES...): one GoogleTest program that sees the library's
# internals (through the static twin of its objects) and the plain twin of the
# engine.
#
# jq_register_tests(NAME): hands a GoogleTest program to ctest, as two entries
# `NAME.1` and `NAME.2` with half of its tests each. An entry for each test case would
# start a process for each, and a start loads some 250 shared libraries of the image
# library's readers, 0.2 s without a sanitizer. Under emulation the program is one entry.
# Every entry leaves its results in test-results/ of the build folder. The tests' own sources
# are compiled with little optimisation, which halves the time that a fresh build takes; what
# they test, and the plain twin, is compiled as it is released.
find_package(GTest REQUIRED)

function(jq_register_tests name)
  target_compile_options(${name} PRIVATE
    $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>:-O1>)
  set(shares 2)
  if(CMAKE_CROSSCOMPILING)
    set(shares 1)
  endif()
  foreach(share RANGE 1 ${shares})
    set(entry ${name})
    if(shares GREATER 1)
      string(APPEND entry .${share})
    endif()
    math(EXPR index "${share} - 1")
    add_test(NAME ${entry} COMMAND ${name})
    set_tests_properties(${entry} PROPERTIES ENVIRONMENT
      "GTEST_TOTAL_SHARDS=${shares};GTEST_SHARD_INDEX=${index};GTEST_BRIEF=1;\
GTEST_OUTPUT=xml:${PROJECT_BINARY_DIR}/test-results/${entry}.xml")
  endforeach()
endfunction()

function(jq_add_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE jqstitching_static jqreference GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  jq_register_tests(${name})
endfunction()
