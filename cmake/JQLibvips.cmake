# JQ_LIBVIPS tells whether Deep Zoom is written, with libvips: AUTO where pkg-config finds
# it, ON to require it, OFF to do without. Sets JQ_HAS_LIBVIPS.
set(JQ_LIBVIPS AUTO CACHE STRING "Write Deep Zoom with libvips: AUTO, ON or OFF")
set_property(CACHE JQ_LIBVIPS PROPERTY STRINGS AUTO ON OFF)

set(JQ_HAS_LIBVIPS OFF)
# A cross build would find the library of the machine that it runs on.
if(JQ_LIBVIPS STREQUAL "ON" OR (JQ_LIBVIPS STREQUAL "AUTO" AND NOT CMAKE_CROSSCOMPILING))
  find_package(PkgConfig)
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(JQ_LIBVIPS IMPORTED_TARGET vips>=8.10)
  endif()
  if(TARGET PkgConfig::JQ_LIBVIPS)
    set(JQ_HAS_LIBVIPS ON)
  elseif(JQ_LIBVIPS STREQUAL "ON")
    message(FATAL_ERROR "JQ_LIBVIPS is ON, and pkg-config finds no vips 8.10 or later "
      "(Debian: libvips-dev)")
  endif()
endif()
message(STATUS "Deep Zoom with libvips: ${JQ_HAS_LIBVIPS}")
