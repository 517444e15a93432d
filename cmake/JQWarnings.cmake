add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual)
if(JQ_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
