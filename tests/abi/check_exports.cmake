# Compares the names that a built library exports with the reviewed list.
#   cmake -D LIBRARY=file -D EXPECTED=list -D OBJDUMP=tool -D NM=tool -P check_exports.cmake
# objdump lists the exports of a DLL, nm those of a shared object.

include(${CMAKE_CURRENT_LIST_DIR}/compare_names.cmake)

if(LIBRARY MATCHES "\\.dll$")
  execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  # A row is "[   0] Name", with newer binutils "[   0] +base[   1]  0000 Name". The table ends at an empty line.
  string(REGEX REPLACE "^.*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" table "${output}")
  string(REGEX REPLACE "\n\n.*$" "" table "${table}")
  string(REGEX MATCHALL "\t\\[[^\n]+" rows "${table}")
  list(TRANSFORM rows REPLACE "^.* " "")
else()
  execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" rows "${output}")
  list(TRANSFORM rows REPLACE " .*" "")
endif()
compare_names(${LIBRARY} "${rows}" ${EXPECTED})
