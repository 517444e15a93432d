# Builds and runs the consumer with the installed CMake packages.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
set(build ${WORK_DIR}/cmake_consumer)
file(REMOVE_RECURSE ${build})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${PREFIX}
  "-DCMAKE_CXX_FLAGS=${sanitizer_flags}")
run(${CMAKE_COMMAND} --build ${build})
run(${build}/consumer)
if(NOT out STREQUAL "stitched\n")
  message(FATAL_ERROR "unexpected output: ${out}")
endif()

file(STRINGS ${build}/CMakeCache.txt found REGEX "^JQImageStitching_DIR")
if(NOT found MATCHES "${PREFIX}")
  message(FATAL_ERROR "another installation was found: ${found}")
endif()
