# Runs a program and compares what it prints with a file, or with the block of a page that begins with a given line.
#   cmake -D COMMAND=program;arguments -D EXPECTED=file [-D BLOCK="```text"] -P check_output.cmake

include(${CMAKE_CURRENT_LIST_DIR}/read_block.cmake)

execute_process(COMMAND ${COMMAND} OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
  message(FATAL_ERROR "${COMMAND} ended with ${result} after\n${output}")
endif()
string(REPLACE "\r\n" "\n" output "${output}")  # a Windows program prints in text mode
if(DEFINED BLOCK)
  read_block(${EXPECTED} "${BLOCK}" expected)
else()
  file(READ ${EXPECTED} expected)
endif()
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${COMMAND} printed\n${output}\nbut ${EXPECTED} says\n${expected}")
endif()
