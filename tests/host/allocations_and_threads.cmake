# Failing allocations, failing calls of the system, threads and unloading. kelmo_tests depends on the programs, so that one target builds all tests of kelmo.
function(kelmo_add_program name)
  kelmo_add_test_program(${name} ${ARGN})
  add_test(NAME ${name} COMMAND ${name})
  kelmo_set_own_folder(${name})
  add_dependencies(kelmo_tests ${name})
endfunction()

kelmo_add_program(kelmo_threads_test threads_test.cpp)
find_package(Threads REQUIRED)
target_link_libraries(kelmo_threads_test PRIVATE kelmo::kelmo Threads::Threads)

kelmo_add_program(kelmo_unload_test renamed_kelmo_test.cpp unload_kelmo_test.cpp)
target_include_directories(kelmo_unload_test PRIVATE ${PROJECT_SOURCE_DIR}/include)
target_link_libraries(kelmo_unload_test PRIVATE Threads::Threads ${CMAKE_DL_LIBS})
add_dependencies(kelmo_unload_test kelmo)
set(file $<TARGET_FILE:kelmo>)
if(WIN32)  # the program is in the folder of the library
  set(file $<TARGET_FILE_NAME:kelmo>)
endif()
target_compile_definitions(kelmo_unload_test PRIVATE KELMO_FILE="${file}" KELMO_PATH="$<TARGET_FILE:kelmo>")

set(failures allocation_failures_test.cpp ../support/allocation_probe.cpp)
kelmo_add_program(kelmo_allocation_failures_inside_test ${failures} ../../host/c_api.cpp
  ../../host/c_quantities.cpp ../../host/c_units.cpp)
if(WIN32)  # with the units after Init, as the file of kelmo
  target_sources(kelmo_allocation_failures_inside_test PRIVATE ../../resources/default_unit_table.rc)
endif()
target_link_libraries(kelmo_allocation_failures_inside_test PRIVATE kelmo_core)
target_compile_definitions(kelmo_allocation_failures_inside_test PRIVATE KELMO_STATIC)
if(NOT WIN32)
  kelmo_add_program(kelmo_system_calls_test system_calls_posix_test.cpp)
  target_link_libraries(kelmo_system_calls_test PRIVATE kelmo_core ${CMAKE_DL_LIBS})
  # On Windows a loaded library does not call the program's operator new.
  kelmo_add_program(kelmo_allocation_failures_test ${failures})
  target_link_libraries(kelmo_allocation_failures_test PRIVATE kelmo::kelmo)
  kelmo_add_memcheck(kelmo_allocation_failures_test)
endif()
