# A folder that was configured without tests, as for an installation, has them again once a preset alone configures it:
# else ./test would run what an earlier build has left, or nothing.
#   cmake -D SOURCE=folder -D WORK=folder -P check_presets.cmake

file(REMOVE_RECURSE ${WORK})
foreach(options "-DKELMO_LOCALIZER_TESTS=OFF;-DKELMO_LOCALIZER_EXAMPLES=OFF" "")
  execute_process(COMMAND ${CMAKE_COMMAND} --preset linux-release -B ${WORK} ${options}
    WORKING_DIRECTORY ${SOURCE} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
  endif()
  execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${WORK} --show-only OUTPUT_VARIABLE tests ERROR_QUIET)
  foreach(name unit_tests demo_host_output)
    if(options AND tests MATCHES " ${name}\n")
      message(FATAL_ERROR "${name} is there without tests and examples")
    elseif(NOT options AND NOT tests MATCHES " ${name}\n")
      message(FATAL_ERROR "${name} is not there again:\n${tests}")
    endif()
  endforeach()
endforeach()
