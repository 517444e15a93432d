if(MSVC)
  add_compile_options(/W4 $<$<BOOL:${JQ_WARNINGS_AS_ERRORS}>:/WX>)
else()
  add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    $<$<BOOL:${JQ_WARNINGS_AS_ERRORS}>:-Werror>)
endif()
