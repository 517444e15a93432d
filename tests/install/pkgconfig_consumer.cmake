# Builds and runs the consumer with pkg-config and a bare compiler call.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
set(program ${WORK_DIR}/pkgconfig_consumer)
file(REMOVE ${program})
set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
run(${PKG_CONFIG} --cflags --libs jqimagestitching jqimageconvert)
separate_arguments(flags UNIX_COMMAND "${out}")
run(${CXX} -std=c++17 ${sanitizer_flags} ${SOURCE_DIR}/consumer.cpp -o ${program} ${flags})

set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})
run(${program})
if(NOT out STREQUAL "stitched\n")
  message(FATAL_ERROR "unexpected output: ${out}")
endif()
