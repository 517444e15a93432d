# Builds the example host with nothing but the installed packages.
include(${CMAKE_CURRENT_LIST_DIR}/../install/run.cmake)
set(build ${WORK_DIR}/installed_example)
file(REMOVE_RECURSE ${build})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${PREFIX}
  "-DCMAKE_CXX_FLAGS=${sanitizer_flags}")
run(${CMAKE_COMMAND} --build ${build})
# Without frames there is no mosaic, which the host tells by its exit code.
execute_process(COMMAND ${build}/example_host RESULT_VARIABLE result)
if(NOT result EQUAL 1)
  message(FATAL_ERROR "the example host ended with ${result}")
endif()
