# jq_add_test(NAME SOURCES...): one GoogleTest program that sees the library's
# internals (through the static twin of its objects) and the plain twin of the
# engine. Each test case becomes one ctest entry; under emulation, where every start
# takes seconds, the whole program does.
find_package(GTest REQUIRED)
include(GoogleTest)

function(jq_add_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE jqstitching_static jqreference GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${name} COMMAND ${name})
  else()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
  endif()
endfunction()
