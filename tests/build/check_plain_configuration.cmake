# Configures the project without a preset, with each generator of Linux. The default build type is Release, but not
# inside another project. Without GoogleTest or Python the tests are left out and one line says so. If the tests are
# required, it is an error.
#   cmake -D SOURCE=folder -D WORK=folder -P check_plain_configuration.cmake

set(without_googletest -D CMAKE_DISABLE_FIND_PACKAGE_GTest=ON)
set(without_python -D CMAKE_DISABLE_FIND_PACKAGE_Python3=ON)
unset(ENV{CMAKE_BUILD_TYPE})
unset(ENV{CMAKE_GENERATOR})

# configure(succeeds options...): configures WORK/build. Options of earlier calls have no effect.
function(configure succeeds)
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -U CMAKE_DISABLE_FIND_PACKAGE_*
      -U KELMO_LOCALIZER_TESTS -U CMAKE_BUILD_TYPE ${ARGN}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  string(REGEX REPLACE "-- Build files have been written to: [^\n]*\n" "" output "${output}")  # a folder may have any name
  list(JOIN ARGN " " options)
  set(what "configured with ${options}, the project" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
  if((result EQUAL 0 AND NOT succeeds) OR (succeeds AND NOT result EQUAL 0))
    message(FATAL_ERROR "configuring with ${options} ended with ${result}:\n${output}")
  endif()
endfunction()

function(expect_build_type expected)
  load_cache(${WORK}/build READ_WITH_PREFIX of_cache_ CMAKE_BUILD_TYPE)
  if(NOT "${of_cache_CMAKE_BUILD_TYPE}" STREQUAL "${expected}")
    message(FATAL_ERROR "${what} has the build type '${of_cache_CMAKE_BUILD_TYPE}' and not '${expected}'")
  endif()
endfunction()

# expect_no_tests(missing): the tests are left out, one line names what is missing, and ctest finds no tests.
function(expect_no_tests missing)
  string(REGEX MATCHALL "[^\n]*tests[^\n]*" said "${output}")
  if(NOT said STREQUAL "-- The tests are left out. To have them, install ${missing}.")
    message(FATAL_ERROR "${what} does not say in one line that ${missing} is missing:\n${output}")
  endif()
  execute_process(COMMAND ${CMAKE_CTEST_COMMAND} WORKING_DIRECTORY ${WORK}/build
    OUTPUT_VARIABLE listed ERROR_VARIABLE listed RESULT_VARIABLE result)
  if(NOT result EQUAL 0 OR NOT listed MATCHES "No tests were found")
    message(FATAL_ERROR "${what} has tests for ctest, or ctest fails:\n${listed}")
  endif()
endfunction()

# expect_tests(): the tests exist, except the long runs.
function(expect_tests)
  execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --show-only WORKING_DIRECTORY ${WORK}/build OUTPUT_VARIABLE listed
    ERROR_QUIET)
  if(output MATCHES "left out" OR NOT listed MATCHES " unit_tests\n" OR listed MATCHES " long_model_test\n")
    message(FATAL_ERROR "${what} has the wrong tests:\n${output}${listed}")
  endif()
endfunction()

set(googletest "GoogleTest (Debian: libgtest-dev)")
set(python "Python 3 (Debian: python3)")
foreach(generator "Ninja Multi-Config" "Unix Makefiles" Ninja)
  file(REMOVE_RECURSE ${WORK})
  configure(TRUE -G ${generator} ${without_googletest} ${without_python})
  expect_no_tests("${googletest} and ${python}")
  if(generator STREQUAL "Ninja Multi-Config")
    expect_build_type("")
  else()
    expect_build_type(Release)
  endif()
endforeach()
configure(TRUE ${without_googletest})
expect_no_tests("${googletest}")
configure(TRUE ${without_python})
expect_no_tests("${python}")
configure(FALSE ${without_python} -D KELMO_LOCALIZER_TESTS=ON)
string(REGEX REPLACE "[ \n]+" " " output "${output}")
if(NOT output MATCHES "tests are asked for. Install Python 3 ")
  message(FATAL_ERROR "${what} fails without the reason:\n${output}")
endif()
configure(TRUE)
expect_tests()
configure(TRUE ${without_googletest} -D CMAKE_BUILD_TYPE=Debug)
expect_build_type(Debug)
set(ENV{CMAKE_BUILD_TYPE} Debug)
configure(TRUE ${without_googletest})
expect_build_type(Debug)
unset(ENV{CMAKE_BUILD_TYPE})

file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/host/CMakeLists.txt "
cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES NONE)
add_subdirectory(\"${SOURCE}\" library)
")
set(SOURCE ${WORK}/host)
configure(TRUE -G Ninja)
expect_build_type("")
if(output MATCHES "tests")
  message(FATAL_ERROR "inside another project the library mentions its tests:\n${output}")
endif()
