# Preprocesses the header as a host, as the library and as its tests. Fails unless the three results differ only in
# attributes of the linkage. Two definitions of a member or two layouts of a class are undefined behaviour, about which
# no compiler warns.
#   cmake -D HEADER=file -D MACRO=prefix -D CONTAINS=regex -D COMPILER=file -P check_one_definition.cmake
# MACRO_BUILDING and MACRO_STATIC are the states of the export macro. CONTAINS is in every header that was read.

foreach(state HOST BUILDING STATIC)
  execute_process(COMMAND ${COMPILER} -E -P -x c++ -D ${MACRO}_${state} ${HEADER}
    OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
  if(NOT code MATCHES "${CONTAINS}")
    message(FATAL_ERROR "the header was not read:\n${code}")
  endif()
  string(REGEX REPLACE "__attribute__ *\\(\\((visibility\\(\"default\"\\)|noinline(, used)?|dllexport|dllimport)\\)\\)" "" code
    "${code}")
  string(REGEX REPLACE "[ \n]+" " " ${state} "${code}")
endforeach()
foreach(state BUILDING STATIC)
  if(NOT ${state} STREQUAL HOST)
    message(FATAL_ERROR "with ${MACRO}_${state} the header differs from that of a host")
  endif()
endforeach()
