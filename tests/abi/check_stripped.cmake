# Fails if a shipped library has a symbol table. Exports are in another table.
#   cmake -D LIBRARY=file -D OBJDUMP=tool -P check_stripped.cmake

execute_process(COMMAND ${OBJDUMP} -t ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
# Below the heading GNU's tool says that there are no symbols; LLVM's tool prints nothing.
if(NOT symbols MATCHES "SYMBOL TABLE:\n(no symbols\n)?\n*$")
  string(SUBSTRING "${symbols}" 0 1000 symbols)
  message(FATAL_ERROR "There is a symbol table in ${LIBRARY}, which begins with\n${symbols}")
endif()
