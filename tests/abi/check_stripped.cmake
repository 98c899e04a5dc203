# Fails where a library that is shipped has a symbol table. What it exports is kept apart from that table.
#   cmake -D LIBRARY=file -D OBJDUMP=tool -P check_stripped.cmake

execute_process(COMMAND ${OBJDUMP} -t ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "SYMBOL TABLE:\nno symbols\n")
  string(SUBSTRING "${symbols}" 0 1000 symbols)
  message(FATAL_ERROR "There is a symbol table in ${LIBRARY}, which begins with\n${symbols}")
endif()
