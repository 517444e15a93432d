# Builds a host with its own record and converter round the project's sources, runs it,
# installs it, and runs it from the installed tree.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
set(build ${WORK_DIR}/own_platform)
set(tree ${WORK_DIR}/own_platform_prefix)
file(REMOVE_RECURSE ${build} ${tree})

macro(expect_stitched program)
  run(${program})
  if(NOT out STREQUAL "stitched\n")
    message(FATAL_ERROR "unexpected output: ${out}")
  endif()
endmacro()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/own_platform -B ${build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
  "-DCMAKE_CXX_FLAGS=${sanitizer_flags}" -DCMAKE_INSTALL_LIBDIR=${LIBDIR}
  -DJQ_PROJECT_DIR=${PROJECT_DIR} -DJQ_QT_MAJOR=${QT_MAJOR})
run(${CMAKE_COMMAND} --build ${build} --parallel 2)
expect_stitched(${build}/own_host)

run(${CMAKE_COMMAND} --install ${build} --prefix ${tree})
file(REMOVE_RECURSE ${build})
expect_stitched(${tree}/bin/own_host)
if(NOT EXISTS ${tree}/include/jqimagestitching.h)
  message(FATAL_ERROR "the public headers were not installed")
endif()
# A package that cannot name the host's libraries would only fail later.
foreach(file include/jqglobalclass.h include/jqimageconvert.h
    ${LIBDIR}/cmake/JQImageStitching ${LIBDIR}/pkgconfig/jqimagestitching.pc)
  if(EXISTS ${tree}/${file})
    message(FATAL_ERROR "${file} was installed")
  endif()
endforeach()
