# Installs the library as the README says, builds the project in the folder host with it, and runs the README's hosts.
# Their output must be that of the README.
#   cmake -D BY=find_package|add_subdirectory -D WORK=folder -D LIBRARY_SOURCE=folder -D LIBRARY_BUILD=folder
#     -D GENERATOR=name -D OPTIONS=-D;name=value;... -D EMULATOR=program -D INSTALLED_FILES=list
#     -D EXPORTED_NAMES=list -D OBJDUMP=tool -D NM=tool -P check_consumer.cmake

include(${CMAKE_CURRENT_LIST_DIR}/../abi/compare_names.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/consumer_project.cmake)

function(copy_host example)
  configure_file(${LIBRARY_SOURCE}/examples/${example}.cpp ${WORK}/project/host.cpp COPYONLY)
endfunction()

file(REMOVE_RECURSE ${WORK})
copy_host(first_host)
configure_file(${LIBRARY_SOURCE}/examples/print.h ${WORK}/project/print.h COPYONLY)
if(BY STREQUAL "find_package")
  install_library()
  file(GLOB_RECURSE installed RELATIVE ${WORK}/prefix LIST_DIRECTORIES FALSE ${WORK}/prefix/*)
  compare_names("the installation" "${installed}" ${INSTALLED_FILES})
  file(GLOB library ${WORK}/prefix/bin/*_Localizer.dll ${WORK}/prefix/lib/*_Localizer.so.*.*.*)
  check_installed_file(${library} ${EXPORTED_NAMES} stripped exports hardening)
endif()
write_project(host kelmo::localizer kelmo_localizer)
build_project()

if(BY STREQUAL "find_package")
  # A project for another system or processor must not find this package.
  foreach(other "-D;CMAKE_SYSTEM_NAME=Generic" "-D;CMAKE_SYSTEM_NAME=Linux;-D;CMAKE_SYSTEM_PROCESSOR=riscv64")
    file(REMOVE_RECURSE ${WORK}/elsewhere)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${WORK}/project -B ${WORK}/elsewhere -G ${GENERATOR} ${OPTIONS}
        -D CMAKE_PREFIX_PATH=${WORK}/prefix ${other} -U CMAKE_TOOLCHAIN_FILE
      OUTPUT_VARIABLE elsewhere ERROR_VARIABLE elsewhere RESULT_VARIABLE result)
    if(result EQUAL 0 OR NOT elsewhere MATCHES "version: [0-9.]+ \\(")
      message(FATAL_ERROR "the package was accepted for another system:\n${elsewhere}")
    endif()
  endforeach()
endif()

run_host(host ${WORK}/build ${LIBRARY_SOURCE}/tests/data/examples/first_host.txt)
copy_host(first_values)  # it catches an exception of the library
run(${CMAKE_COMMAND} --build ${WORK}/build)
run_host(host ${WORK}/build ${LIBRARY_SOURCE}/tests/data/examples/first_values.txt)
ship_project()
run_host(host ${WORK}/shipped/bin ${LIBRARY_SOURCE}/tests/data/examples/first_values.txt)
