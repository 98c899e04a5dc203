# README's program is the example that the tests build and run.
#   cmake -D README=page -D EXAMPLE=source -P check_readme.cmake

include(${CMAKE_CURRENT_LIST_DIR}/read_block.cmake)

read_block(${README} "```cpp" shown)
file(READ ${EXAMPLE} source)
if(NOT shown STREQUAL source)
  message(FATAL_ERROR "${README} shows\n${shown}\nbut ${EXAMPLE} is\n${source}")
endif()
