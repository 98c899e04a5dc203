# A program runs in the top folder, as a user runs it, and prints the golden file `expected`, a file below tests/data.
function(kelmo_add_output_test name command expected)
  add_test(NAME ${name}_output
    COMMAND ${CMAKE_COMMAND} -D "COMMAND=${command}" -D EXPECTED=${PROJECT_SOURCE_DIR}/tests/data/${expected}
      -D OUTPUT=${CMAKE_CURRENT_BINARY_DIR}/${name}_output.txt ${ARGN}
      -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/check_output.cmake
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  )
  set_tests_properties(${name}_output PROPERTIES ENVIRONMENT LC_ALL=C.UTF-8)
endfunction()
