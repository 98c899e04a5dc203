# A check refuses falsified inputs, one at a time, each with its own complaint (tests/checkers/refusals.py). Runs in one
# build for each system: it depends on the messages of GCC and GNU's tools, and other builds see the same inputs.
#   kelmo_add_refusals(checked [SLOW] [NAME test] argument...)
function(kelmo_add_refusals checked)
  if(NOT (project_checks AND CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"))
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 option "SLOW" "NAME" "")
  if(NOT option_NAME)
    set(option_NAME refusals_of_${checked})
  endif()
  add_test(NAME ${option_NAME}
    COMMAND ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/tests/checkers/${checked}_test.py ${option_UNPARSED_ARGUMENTS})
  # Each falsified input is a run of the check: on a loaded machine many of them take more than two minutes.
  set_tests_properties(${option_NAME} PROPERTIES TIMEOUT 300)
  if(option_SLOW)
    set_tests_properties(${option_NAME} PROPERTIES LABELS slow)
  endif()
endfunction()
