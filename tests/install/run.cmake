# run(COMMAND...): fails the script with the command's output when it fails; else
# the output is in `out`.
macro(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result
    OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message(FATAL_ERROR "${command}\nended with ${result}\n${out}\n${err}")
  endif()
endmacro()

set(sanitizer_flags "")
if(SANITIZERS)
  list(JOIN SANITIZERS "," sanitizer_flags)
  set(sanitizer_flags -fsanitize=${sanitizer_flags})
endif()
