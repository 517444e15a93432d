# Installs into an empty prefix and checks that what a host needs is there, and
# that nothing else counts as API.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
file(REMOVE_RECURSE ${PREFIX})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX})

foreach(file
    include/jqframeverdict.h include/jqimagestitching.h include/jqstitchingalgorithm.h
    include/jqstitchingstate.h
    include/jqglobalclass.h include/jqimageconvert.h
    ${LIBDIR}/libJQImageStitching.so ${LIBDIR}/libJQImageStitching.so.1
    ${LIBDIR}/libJQImageConvert.so ${LIBDIR}/libJQImageConvert.so.1
    ${LIBDIR}/cmake/JQImageStitching/JQImageStitchingConfig.cmake
    ${LIBDIR}/cmake/JQImageConvert/JQImageConvertConfig.cmake
    ${LIBDIR}/cmake/JQGlobalClass/JQGlobalClassConfig.cmake
    ${LIBDIR}/pkgconfig/jqimagestitching.pc ${LIBDIR}/pkgconfig/jqimageconvert.pc)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "${file} was not installed")
  endif()
endforeach()

file(GLOB_RECURSE headers RELATIVE ${PREFIX}/include ${PREFIX}/include/*)
list(LENGTH headers count)
if(NOT count EQUAL 6)
  message(FATAL_ERROR "headers besides the public ones were installed: ${headers}")
endif()
