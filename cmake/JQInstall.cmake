# cmake --install: libraries, headers, one CMake package for each library and
# pkg-config files.
#
# A host that brings its own platform libraries gets the stitcher's library and headers
# beside its own files, so that its programs run from the installed tree. There is no
# package then: it would have to name the host's libraries, which only the host can.
include(CMakePackageConfigHelpers)

set(_package_root ${CMAKE_INSTALL_LIBDIR}/cmake)

# The library folder of an installed tree, as seen from the library folder and from
# the program folder, so that the tree can be moved.
file(RELATIVE_PATH _bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

set(_library_folders
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

# jq_install_package(NAME DEPENDENCIES...): the target NAME as the CMake package NAME
# with the target NAME::NAME.
function(jq_install_package name)
  install(TARGETS ${name} EXPORT ${name}Targets ${_library_folders})
  install(EXPORT ${name}Targets NAMESPACE ${name}:: DESTINATION ${_package_root}/${name})

  set(JQ_PACKAGE ${name})
  list(TRANSFORM ARGN REPLACE "(.+)" "find_dependency(\\1)" OUTPUT_VARIABLE _lines)
  list(JOIN _lines "\n" JQ_DEPENDENCIES)
  set(_config ${PROJECT_BINARY_DIR}/package/${name}Config.cmake)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/PackageConfig.cmake.in ${_config}
    INSTALL_DESTINATION ${_package_root}/${name} NO_SET_AND_CHECK_MACRO)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/${name}ConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
  install(FILES ${_config} ${PROJECT_BINARY_DIR}/package/${name}ConfigVersion.cmake
    DESTINATION ${_package_root}/${name})
endfunction()

# jq_install_pkgconfig(NAME LIBRARY DESCRIPTION PRIVATE-REQUIREMENTS)
function(jq_install_pkgconfig name library description private)
  set(JQ_PC_NAME ${name})
  set(JQ_PC_LIBRARY ${library})
  set(JQ_PC_DESCRIPTION ${description})
  set(JQ_PC_REQUIRES_PRIVATE ${private})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/pkgconfig.pc.in
    ${PROJECT_BINARY_DIR}/package/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# pkg-config files move with their tree too.
file(RELATIVE_PATH JQ_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})

set(_opencv "OpenCV 4 COMPONENTS core")
set(_qt "Qt${JQ_QT_MAJOR} COMPONENTS Core")

if(JQ_USE_OWN_PLATFORM)
  install(TARGETS JQImageStitching ${_library_folders})
else()
  jq_install_package(JQGlobalClass)
  jq_install_package(JQImageConvert JQGlobalClass ${_opencv} ${_qt})
  jq_install_package(JQImageStitching JQImageConvert ${_opencv} ${_qt})
  set_target_properties(JQImageConvert PROPERTIES INSTALL_RPATH "$ORIGIN")
  jq_install_pkgconfig(jqimageconvert JQImageConvert
    "Raw camera image records as matrices" "")
  jq_install_pkgconfig(jqimagestitching JQImageStitching "${PROJECT_DESCRIPTION}"
    jqimageconvert)
  install(FILES
    ${PROJECT_SOURCE_DIR}/platform/jqglobalclass/jqglobalclass.h
    ${PROJECT_SOURCE_DIR}/platform/jqimageconvert/jqimageconvert.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()

set_target_properties(JQImageStitching PROPERTIES INSTALL_RPATH "$ORIGIN")
install(FILES
  ${PROJECT_SOURCE_DIR}/include/jqframeverdict.h
  ${PROJECT_SOURCE_DIR}/include/jqimagestitching.h
  ${PROJECT_SOURCE_DIR}/include/jqstitchingalgorithm.h
  ${PROJECT_SOURCE_DIR}/include/jqstitchingstate.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

if(TARGET jqstitch)
  set_target_properties(jqstitch PROPERTIES INSTALL_RPATH "$ORIGIN/${_bin_to_lib}")
endif()
if(TARGET jqscope)
  set_target_properties(jqscope PROPERTIES INSTALL_RPATH "$ORIGIN/${_bin_to_lib}")
endif()
