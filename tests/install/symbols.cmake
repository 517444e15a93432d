# The shared library's name for the loader, and its exported symbols: the two
# classes, with the engine's scratch handle that is part of one of them.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
set(library ${PREFIX}/${LIBDIR}/libJQImageStitching.so)
run(${READELF} -d ${library})
if(NOT out MATCHES "SONAME[^\n]*\\[libJQImageStitching\\.so\\.1\\]")
  message(FATAL_ERROR "wrong name for the loader:\n${out}")
endif()

run(${NM} -D --defined-only -C ${library})
string(REPLACE ";" "," out "${out}")
string(REPLACE "\n" ";" lines "${out}")
set(seen)
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^[0-9a-f]+ ([A-Za-z]) (.*)$")
    continue()
  endif()
  set(kind ${CMAKE_MATCH_1})
  set(symbol ${CMAKE_MATCH_2})
  # Instantiations of the standard library's templates are always visible, weak
  # and the same in every program.
  if(kind MATCHES "[WVu]" AND symbol MATCHES "(^|[ *&])std::|^(vtable|typeinfo|typeinfo name) for std::")
    continue()
  endif()
  # The sanitizers keep type information of classes that they check.
  if(SANITIZERS AND kind STREQUAL "V" AND symbol MATCHES "^typeinfo (name )?for Q")
    continue()
  endif()
  # The linker's own marks, and the sanitizers'.
  if(symbol MATCHES "^(__bss_start|_edata|_end|_init|_fini)$")
    continue()
  endif()
  if(SANITIZERS AND symbol MATCHES "^__(asan|odr_asan|ubsan|sanitizer)")
    continue()
  endif()
  if(symbol MATCHES "^(vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )?(JQImageStitching|JQStitchingAlgorithm|jqstitching::WorkspaceHandle)(::|$)")
    list(APPEND seen "${symbol}")
    continue()
  endif()
  message(SEND_ERROR "exported: ${line}")
endforeach()

foreach(needed "JQImageStitching::Stitching(" "JQImageStitching::staticMetaObject"
    "JQStitchingAlgorithm::ImageMosaicFun(" "typeinfo for JQImageStitching")
  string(FIND "${seen}" "${needed}" at)
  if(at EQUAL -1)
    message(SEND_ERROR "not exported: ${needed}")
  endif()
endforeach()
