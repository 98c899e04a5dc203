# Compares the names that a built library exports with the list under review.
#   cmake -D LIBRARY=file -D DEFINITION=exports.def -D EXPECTED=list -D OBJDUMP=tool -D NM=tool
#     -P check_exports.cmake
# A DLL is asked with objdump, a shared object with nm. The definition file is compared as well,
# because MinGW exports the functions by the header's macro, too, and would not miss a name in it.

function(compare what names)
  list(SORT names)
  list(JOIN names "\n" names)
  file(READ ${EXPECTED} expected)
  string(STRIP "${expected}" expected)
  if(NOT names STREQUAL expected)
    message(FATAL_ERROR "${what} has\n${names}\nbut the list ${EXPECTED} says\n${expected}")
  endif()
endfunction()

if(LIBRARY MATCHES "\\.dll$")
  execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  # A row is "[   0] Name"; the table ends at an empty line.
  string(REGEX REPLACE "^.*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" table "${output}")
  string(REGEX REPLACE "\n\n.*$" "" table "${table}")
  string(REGEX REPLACE "\t*\\[ *[0-9]+\\] " "" table "${table}")
  string(REPLACE "\n" ";" rows "${table}")
else()
  execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" rows "${output}")
  list(TRANSFORM rows REPLACE " .*" "")
endif()
compare(${LIBRARY} "${rows}")

file(STRINGS ${DEFINITION} lines REGEX "^    ")
list(TRANSFORM lines STRIP)
compare(${DEFINITION} "${lines}")
