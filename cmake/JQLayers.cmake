# jq_layer_include(LAYER FOLDERS...): a folder of links in the build tree, through
# which alone the sources of a layer find this project's headers. A header of a layer
# above is not in it, so an include that runs upwards does not compile.
function(jq_layer_include layer)
  foreach(folder ${ARGN})
    set(_link ${PROJECT_BINARY_DIR}/layers/${layer}/${folder})
    cmake_path(GET _link PARENT_PATH _parent)
    file(MAKE_DIRECTORY ${_parent})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${_link} COPY_ON_ERROR SYMBOLIC)
  endforeach()
endfunction()
