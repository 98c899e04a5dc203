# A check refuses what is false, with its own complaint: one thing at a time (tests/checkers/refusals.py). Once for each
# system, with the words of GCC and GNU's tools: no other build changes what they see.
#   kelmo_add_refusals(checked [SLOW] argument...)
function(kelmo_add_refusals checked)
  if(NOT (project_checks AND CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"))
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 option "SLOW" "" "")
  add_test(NAME refusals_of_${checked}
    COMMAND ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/tests/checkers/${checked}_test.py ${option_UNPARSED_ARGUMENTS})
  if(option_SLOW)
    set_tests_properties(refusals_of_${checked} PROPERTIES LABELS slow)
  endif()
endfunction()
