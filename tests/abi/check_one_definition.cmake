# Preprocesses the header for hosts as a host sees it, as the library is built with it and as its tests are, and fails
# unless the three differ in attributes of the linkage alone: a member that has two definitions, or a class that has two layouts, is
# undefined behaviour of which no compiler warns.
#   cmake -D HEADER=file -D COMPILER=file -P check_one_definition.cmake

foreach(state HOST BUILDING STATIC)
  execute_process(COMMAND ${COMPILER} -E -P -x c++ -D KELMO_LOCALIZER_${state} ${HEADER}
    OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
  if(NOT code MATCHES "~Double\\(\\)")
    message(FATAL_ERROR "nothing of the header was read:\n${code}")
  endif()
  string(REGEX REPLACE "__attribute__ *\\(\\((visibility\\(\"default\"\\)|noinline(, used)?|dllexport|dllimport)\\)\\)" "" code
    "${code}")
  string(REGEX REPLACE "[ \n]+" " " ${state} "${code}")
endforeach()
foreach(state BUILDING STATIC)
  if(NOT ${state} STREQUAL HOST)
    message(FATAL_ERROR "with KELMO_LOCALIZER_${state} the header says something else than to a host")
  endif()
endforeach()
