# Preprocesses the header as a host, as the library and as its tests. Fails unless the three results differ only in
# attributes of the linkage. Two definitions of a member or two layouts of a class are undefined behaviour, about which
# no compiler warns.
#   cmake -D HEADER=file -D COMPILER=file -P check_one_definition.cmake

foreach(state HOST BUILDING STATIC)
  execute_process(COMMAND ${COMPILER} -E -P -x c++ -D KELMO_LOCALIZER_${state} ${HEADER}
    OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
  if(NOT code MATCHES "~Double\\(\\)")
    message(FATAL_ERROR "the header was not read:\n${code}")
  endif()
  string(REGEX REPLACE "__attribute__ *\\(\\((visibility\\(\"default\"\\)|noinline(, used)?|dllexport|dllimport)\\)\\)" "" code
    "${code}")
  string(REGEX REPLACE "[ \n]+" " " ${state} "${code}")
endforeach()
foreach(state BUILDING STATIC)
  if(NOT ${state} STREQUAL HOST)
    message(FATAL_ERROR "with KELMO_LOCALIZER_${state} the header differs from that of a host")
  endif()
endforeach()
