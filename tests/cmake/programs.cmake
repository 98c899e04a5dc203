# The functions by which the folders add their programs and tests.

# Adds sources to a target. Those whose names end with _posix or _windows, in front of a _test too, belong to one system: they
# are left out on the other one.
function(kelmo_add_sources target)
  if(WIN32)
    set(other posix)
  else()
    set(other windows)
  endif()
  list(FILTER ARGN EXCLUDE REGEX "_${other}(_test)?[.]")
  target_sources(${target} PRIVATE ${ARGN})
endfunction()

# In half the time, without optimising: what is tested is built as it is shipped.
function(kelmo_compile_fast target)
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
  endif()
endfunction()

# GoogleTest's header takes longer than most tests: it is compiled once, with the switches that all of them share. Not for
# Microsoft's compiler, which warns where a target that uses it has other definitions than the one that made it.
function(kelmo_compile_test target)
  kelmo_compile_fast(${target})
  if(NOT MSVC)
    target_precompile_headers(${target} REUSE_FROM kelmo_test_support)
  endif()
endfunction()

# A program of GoogleTest's.
function(kelmo_add_test_program name)
  add_executable(${name})
  kelmo_add_sources(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kelmo_test_support kelmo_localizer_warnings)
  kelmo_compile_test(${name})
endfunction()

# One that loads the built library, and its test.
function(kelmo_add_host_test name)
  kelmo_add_test_program(${name} ${ARGN})
  add_dependencies(${name} kelmo_localizer)
  add_test(NAME ${name} COMMAND ${name})
endfunction()

# Tests of one program run side by side: each in a folder of its own.
function(kelmo_set_own_folder test)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${test})
  set_tests_properties(${test} PROPERTIES WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${test})
endfunction()

# Tests that write the one file of ExportPhyVal, or look whether it is there: one at a time.
function(kelmo_share_exported_file)
  set_tests_properties(${ARGN} PROPERTIES RESOURCE_LOCK exported_file)
endfunction()

# Those that have a place of their own for it on Linux.
function(kelmo_share_exported_file_on_windows)
  if(WIN32)
    kelmo_share_exported_file(${ARGN})
  endif()
endfunction()
