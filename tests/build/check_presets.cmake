# Each preset must set KELMO_LOCALIZER_INSTRUMENTED to the instrumentation that its flags add, because the tests depend
# on it. A build folder that was configured without tests, as for an installation, must have them again after it is
# configured with a preset alone. Otherwise ./test would run old programs or none.
#   cmake -D SOURCE=folder -D WORK=folder -P check_presets.cmake

# Calls CMake with these arguments. Sets `output`.
function(run)
  execute_process(COMMAND ${CMAKE_COMMAND} ${ARGN}
    WORKING_DIRECTORY ${SOURCE} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(--list-presets)
string(REGEX MATCHALL "\n  \"[^\"]+" presets "${output}")
if(NOT presets)
  message(FATAL_ERROR "no preset was found:\n${output}")
endif()
list(TRANSFORM presets REPLACE "\n  \"" "")
foreach(preset IN LISTS presets)
  run(--preset ${preset} -B ${WORK} -N)  # prints all variables, also inherited ones
  if(output MATCHES "-fsanitize")
    set(added SANITIZERS)
  elseif(output MATCHES "-fprofile|-fcoverage|--coverage")
    set(added COVERAGE)
  elseif(output MATCHES "_GLIBCXX_DEBUG")
    set(added DEBUG_MODE)
  else()
    set(added OFF)
  endif()
  set(said OFF)
  if(output MATCHES "KELMO_LOCALIZER_INSTRUMENTED[^=\n]*=\"([^\"]*)\"")
    set(said "${CMAKE_MATCH_1}")
  endif()
  if(NOT said STREQUAL added)
    message(FATAL_ERROR "${preset}: KELMO_LOCALIZER_INSTRUMENTED is ${said}, but the flags add ${added}")
  endif()
endforeach()

foreach(options "-DKELMO_LOCALIZER_TESTS=OFF;-DKELMO_LOCALIZER_EXAMPLES=OFF" "")
  run(--preset linux-release -B ${WORK} ${options})
  execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${WORK} --show-only OUTPUT_VARIABLE tests ERROR_QUIET)
  foreach(name unit_tests demo_host_output)
    if(options AND tests MATCHES " ${name}\n")
      message(FATAL_ERROR "${name} exists without tests and examples")
    elseif(NOT options AND NOT tests MATCHES " ${name}\n")
      message(FATAL_ERROR "${name} is still missing:\n${tests}")
    endif()
  endforeach()
endforeach()
