# Fails where a library that is shipped has a symbol table. What it exports is kept apart from that table.
#   cmake -D LIBRARY=file -D OBJDUMP=tool -P check_stripped.cmake

execute_process(COMMAND ${OBJDUMP} -t ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
# LLVM's tool prints nothing below the heading where GNU's says that there are none.
if(NOT symbols MATCHES "SYMBOL TABLE:\n(no symbols\n)?\n*$")
  string(SUBSTRING "${symbols}" 0 1000 symbols)
  message(FATAL_ERROR "There is a symbol table in ${LIBRARY}, which begins with\n${symbols}")
endif()
