# Runs a program and compares what it prints with a file.
#   cmake -D COMMAND=program;arguments -D EXPECTED=file -P check_output.cmake

execute_process(COMMAND ${COMMAND} OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
  message(FATAL_ERROR "${COMMAND} ended with ${result} after\n${output}")
endif()
string(REPLACE "\r\n" "\n" output "${output}")  # a Windows program prints in text mode
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${COMMAND} printed\n${output}\nbut ${EXPECTED} says\n${expected}")
endif()
