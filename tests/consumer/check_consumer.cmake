# Installs the library as the README says, builds the project in the folder host with it, and runs the README's hosts.
# Their output must be that of the README.
#   cmake -D BY=find_package|add_subdirectory -D WORK=folder -D LIBRARY_SOURCE=folder -D LIBRARY_BUILD=folder
#     -D GENERATOR=name -D OPTIONS=-D;name=value;... -D EMULATOR=program -D INSTALLED_FILES=list
#     -D EXPORTED_NAMES=list -D OBJDUMP=tool -D NM=tool -P check_consumer.cmake

include(${CMAKE_CURRENT_LIST_DIR}/../abi/compare_names.cmake)

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${LIBRARY_SOURCE}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN} ended with ${result} after\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(copy_host example)
  configure_file(${LIBRARY_SOURCE}/examples/${example}.cpp ${WORK}/project/host.cpp COPYONLY)
endfunction()

file(REMOVE_RECURSE ${WORK})
copy_host(first_host)
configure_file(${LIBRARY_SOURCE}/examples/print.h ${WORK}/project/print.h COPYONLY)
file(READ ${CMAKE_CURRENT_LIST_DIR}/host/CMakeLists.txt project)

if(BY STREQUAL "find_package")
  file(STRINGS ${LIBRARY_SOURCE}/README.md command REGEX "^cmake --install build/linux-release --prefix DIR")
  string(REGEX REPLACE "^cmake --install build/linux-release --prefix DIR ?" "" install_options "${command}")
  run(${CMAKE_COMMAND} --install ${LIBRARY_BUILD} --prefix ${WORK}/prefix ${install_options})
  list(APPEND OPTIONS -D CMAKE_PREFIX_PATH=${WORK}/prefix)
  file(GLOB_RECURSE installed RELATIVE ${WORK}/prefix LIST_DIRECTORIES FALSE ${WORK}/prefix/*)
  compare_names("the installation" "${installed}" ${INSTALLED_FILES})

  # The other tests check the built file, not the installed one.
  file(GLOB library ${WORK}/prefix/bin/*.dll ${WORK}/prefix/lib/*.so.*.*.*)
  foreach(property stripped exports hardening)
    run(${CMAKE_COMMAND} -D LIBRARY=${library} -D EXPECTED=${EXPORTED_NAMES} -D OBJDUMP=${OBJDUMP} -D NM=${NM}
      -P ${CMAKE_CURRENT_LIST_DIR}/../abi/check_${property}.cmake)
  endforeach()
else()
  file(CREATE_LINK ${LIBRARY_SOURCE} ${WORK}/project/kelmo_Mestrel_Localizer SYMBOLIC)
  string(REGEX REPLACE "find_package\\([^)]*\\)" "add_subdirectory(kelmo_Mestrel_Localizer)" project "${project}")
  string(REPLACE "IMPORTED_RUNTIME_ARTIFACTS kelmo::localizer" "TARGETS kelmo_localizer" project "${project}")
endif()
file(WRITE ${WORK}/project/CMakeLists.txt "${project}")

run(${CMAKE_COMMAND} -S ${WORK}/project -B ${WORK}/build -G ${GENERATOR} ${OPTIONS}
  -D CMAKE_BUILD_TYPE=Release -D CMAKE_EXPORT_COMPILE_COMMANDS=ON)
run(${CMAKE_COMMAND} --build ${WORK}/build)
file(READ ${WORK}/build/compile_commands.json commands)
if(output MATCHES "warning" OR commands MATCHES " -W")
  message(FATAL_ERROR "the library's warnings reach its users:\n${output}\n${commands}")
endif()
if(commands MATCHES "_test\\.cpp|demo_host\\.cpp|KELMO_LOCALIZER_BUILDING[^\n]*host\\.cpp")
  message(FATAL_ERROR "the library's tests, examples or definitions reach its users:\n${commands}")
endif()

if(BY STREQUAL "find_package")
  # A project for another system or processor must not find this package.
  foreach(other "-D;CMAKE_SYSTEM_NAME=Generic" "-D;CMAKE_SYSTEM_NAME=Linux;-D;CMAKE_SYSTEM_PROCESSOR=riscv64")
    file(REMOVE_RECURSE ${WORK}/elsewhere)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${WORK}/project -B ${WORK}/elsewhere -G ${GENERATOR} ${OPTIONS}
        ${other} -U CMAKE_TOOLCHAIN_FILE
      OUTPUT_VARIABLE elsewhere ERROR_VARIABLE elsewhere RESULT_VARIABLE result)
    if(result EQUAL 0 OR NOT elsewhere MATCHES "version: [0-9.]+ \\(")
      message(FATAL_ERROR "the package was accepted for another system:\n${elsewhere}")
    endif()
  endforeach()
endif()

# Runs the host in its build folder and in its installation, where it needs no other files.
function(run_host example folder)
  file(READ ${LIBRARY_SOURCE}/tests/data/examples/${example}.txt expected)
  file(GLOB host ${folder}/host ${folder}/host.exe)
  run(${EMULATOR} ${host})
  string(REPLACE "\r\n" "\n" output "${output}")
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${host} printed\n${output}\ninstead of\n${expected}")
  endif()
endfunction()
run_host(first_host ${WORK}/build)
copy_host(first_values)  # it catches an exception of the library
run(${CMAKE_COMMAND} --build ${WORK}/build)
run_host(first_values ${WORK}/build)
run(${CMAKE_COMMAND} --install ${WORK}/build --prefix ${WORK}/shipped)
if(EXISTS ${WORK}/shipped/include)
  message(FATAL_ERROR "the library's install rules reach its users")
endif()
file(REMOVE_RECURSE ${WORK}/prefix ${WORK}/build)
run_host(first_values ${WORK}/shipped/bin)
