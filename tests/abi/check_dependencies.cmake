# Compares the libraries that a built file needs with the reviewed list. For a shared object, also checks the SONAME
# and the version in the file name.
#   cmake -D LIBRARY=file -D EXPECTED=list -D OBJDUMP=tool [-D PLAIN=lib<name>.so -D VERSION=major.minor.patch]
#     -P check_dependencies.cmake

include(${CMAKE_CURRENT_LIST_DIR}/compare_names.cmake)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(DLL Name:|NEEDED) +[^\n]+" rows "${output}")
list(TRANSFORM rows REPLACE "^(DLL Name:|NEEDED) +" "")
compare_names(${LIBRARY} "${rows}" ${EXPECTED})

if(NOT LIBRARY MATCHES "\\.(dll|exe)$")
  get_filename_component(name ${LIBRARY} NAME)
  if(NOT name STREQUAL "${PLAIN}.${VERSION}")
    message(FATAL_ERROR "the file is ${name}, but the version is ${VERSION}")
  endif()
  string(REGEX REPLACE "\\..*" "" major ${VERSION})
  if(NOT output MATCHES "\n +SONAME +([^\n]+)\n" OR NOT CMAKE_MATCH_1 STREQUAL "${PLAIN}.${major}")
    message(FATAL_ERROR "${LIBRARY} does not have the SONAME ${PLAIN}.${major}:\n${output}")
  endif()
endif()
