# Functions that add programs and tests.

# Adds sources to a target. A file whose name ends with _posix, _windows, _posix_test or _windows_test belongs to one
# system.
function(kelmo_add_sources target)
  if(WIN32)
    set(other posix)
  else()
    set(other windows)
  endif()
  list(FILTER ARGN EXCLUDE REGEX "_${other}(_test)?[.]")
  target_sources(${target} PRIVATE ${ARGN})
endfunction()

# Compiles tests without optimisation, in half the time. The tested library is built as it is shipped.
function(kelmo_compile_fast target)
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
  endif()
endfunction()

# GoogleTest's header takes longer than most tests, so it is precompiled for all of them. Not with Microsoft's compiler,
# which warns if the definitions of the targets differ.
function(kelmo_compile_test target)
  kelmo_compile_fast(${target})
  if(NOT MSVC)
    target_precompile_headers(${target} REUSE_FROM kelmo_test_support)
  endif()
endfunction()

# Adds a program with GoogleTest.
function(kelmo_add_test_program name)
  add_executable(${name})
  kelmo_add_sources(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kelmo_test_support kelmo_localizer_warnings)
  kelmo_compile_test(${name})
endfunction()

# Adds a program that loads the built library, and its test.
function(kelmo_add_host_test name)
  kelmo_add_test_program(${name} ${ARGN})
  add_dependencies(${name} kelmo_localizer)
  add_test(NAME ${name} COMMAND ${name})
endfunction()

# Tests of one program may run in parallel: each runs in its own folder.
function(kelmo_set_own_folder test)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${test})
  set_tests_properties(${test} PROPERTIES WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${test})
endfunction()

# Tests that write the file of ExportPhyVal, or check that it exists, run one at a time.
function(kelmo_share_exported_file)
  set_tests_properties(${ARGN} PROPERTIES RESOURCE_LOCK exported_file)
endfunction()

# For tests that have their own folder for this file on Linux.
function(kelmo_share_exported_file_on_windows)
  if(WIN32)
    kelmo_share_exported_file(${ARGN})
  endif()
endfunction()

# For tests in which Wine has another user. Wine keeps the settings of its user in one place, and each program that starts
# writes those of its environment there: a program of another test would change them meanwhile.
function(kelmo_run_alone_under_wine)
  if(WIN32)
    set_tests_properties(${ARGN} PROPERTIES RUN_SERIAL ON)
  endif()
endfunction()
