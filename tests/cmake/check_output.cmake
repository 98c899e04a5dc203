# Runs a program and compares its output with a golden file byte by byte. Line ends are ignored for a Windows program,
# which prints in text mode.
#   cmake -D COMMAND=program;arguments -D EXPECTED=file -D OUTPUT=file [-D STATUS=number] -P check_output.cmake

execute_process(COMMAND ${COMMAND} OUTPUT_FILE ${OUTPUT} RESULT_VARIABLE result)
file(READ ${OUTPUT} output)
if(NOT DEFINED STATUS)
  set(STATUS 0)
endif()
if(NOT result STREQUAL STATUS)
  message(FATAL_ERROR "${COMMAND} ended with ${result} after\n${output}")
endif()
file(READ ${EXPECTED} expected)
if(expected STREQUAL "")
  message(FATAL_ERROR "${EXPECTED} is empty: a program that does nothing would print that")
endif()
if("${COMMAND}" MATCHES "\\.exe(;|$)")
  set(ignore_eol --ignore-eol)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${ignore_eol} ${OUTPUT} ${EXPECTED} RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
  message(FATAL_ERROR "${COMMAND} printed\n${output}\nbut ${EXPECTED} says\n${expected}")
endif()
