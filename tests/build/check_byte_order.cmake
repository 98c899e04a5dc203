# Compiles the header that reads words for this system and for a big-endian one. Fails unless only the latter is
# rejected, and for that reason.
#   cmake -D HEADER=file -D COMPILER=file -P check_byte_order.cmake

function(compile)
  execute_process(COMMAND ${COMPILER} -std=c++17 -fsyntax-only -x c++ ${ARGN} ${HEADER}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  set(output "${output}" PARENT_SCOPE)
  set(result "${result}" PARENT_SCOPE)
endfunction()

compile()
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${HEADER} does not compile on this system:\n${output}")
endif()
compile(-U__BYTE_ORDER__ -D__BYTE_ORDER__=__ORDER_BIG_ENDIAN__)
if(result EQUAL 0)
  message(FATAL_ERROR "${HEADER} compiles on a big-endian system")
endif()
if(NOT output MATCHES "error: [^\n]*little-endian")
  message(FATAL_ERROR "${HEADER} rejects a big-endian system for another reason:\n${output}")
endif()
