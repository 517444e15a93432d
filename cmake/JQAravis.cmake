# JQ_ARAVIS tells whether GenICam cameras are known, with Aravis: AUTO where pkg-config finds
# it, ON to require it, OFF to do without. Sets JQ_HAS_ARAVIS.
set(JQ_ARAVIS AUTO CACHE STRING "Take frames of GenICam cameras with Aravis: AUTO, ON or OFF")
set_property(CACHE JQ_ARAVIS PROPERTY STRINGS AUTO ON OFF)

set(JQ_HAS_ARAVIS OFF)
# A cross build would find the library of the machine that it runs on.
if(JQ_ARAVIS STREQUAL "ON" OR (JQ_ARAVIS STREQUAL "AUTO" AND NOT CMAKE_CROSSCOMPILING))
  find_package(PkgConfig)
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(JQ_ARAVIS_FOUND IMPORTED_TARGET aravis-0.8)
  endif()
  if(TARGET PkgConfig::JQ_ARAVIS_FOUND)
    set(JQ_HAS_ARAVIS ON)
  elseif(JQ_ARAVIS STREQUAL "ON")
    message(FATAL_ERROR "JQ_ARAVIS is ON, and pkg-config finds no aravis-0.8 "
      "(Debian: libaravis-dev)")
  endif()
endif()
message(STATUS "GenICam cameras with Aravis: ${JQ_HAS_ARAVIS}")
