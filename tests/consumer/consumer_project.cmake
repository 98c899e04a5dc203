# What check_consumer.cmake and check_kelmo_consumer.cmake share: a project in ${WORK}/project that uses the library in
# the way ${BY}, find_package or add_subdirectory.

# run(command...): fails unless the command succeeds. Its output is in `output`. It runs in the folder `working_folder`,
# or in that of the library's sources.
function(run)
  if(NOT working_folder)
    set(working_folder ${LIBRARY_SOURCE})
  endif()
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${working_folder}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN} ended with ${result} after\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# install_library(): installs it to ${WORK}/prefix, as the README says.
function(install_library)
  file(STRINGS ${LIBRARY_SOURCE}/README.md command REGEX "^cmake --install build/linux-release --prefix DIR")
  string(REGEX REPLACE "^cmake --install build/linux-release --prefix DIR ?" "" install_options "${command}")
  run(${CMAKE_COMMAND} --install ${LIBRARY_BUILD} --prefix ${WORK}/prefix ${install_options})
endfunction()

# check_installed_file(library exported_names property...): the other tests check the built file, not the installed one.
function(check_installed_file library exported_names)
  foreach(property ${ARGN})
    run(${CMAKE_COMMAND} -D LIBRARY=${library} -D EXPECTED=${exported_names} -D OBJDUMP=${OBJDUMP} -D NM=${NM}
      -P ${CMAKE_CURRENT_LIST_DIR}/../abi/check_${property}.cmake)
  endforeach()
endfunction()

# write_project(host imported target): the project in the folder `host`, in the way ${BY}.
function(write_project host imported target)
  file(READ ${CMAKE_CURRENT_LIST_DIR}/${host}/CMakeLists.txt project)
  if(BY STREQUAL "add_subdirectory")
    file(CREATE_LINK ${LIBRARY_SOURCE} ${WORK}/project/kelmo_Mestrel_Localizer SYMBOLIC)
    string(REGEX REPLACE "find_package\\([^)]*\\)" "add_subdirectory(kelmo_Mestrel_Localizer)" project "${project}")
    string(REPLACE "IMPORTED_RUNTIME_ARTIFACTS ${imported}" "TARGETS ${target}" project "${project}")
  endif()
  file(WRITE ${WORK}/project/CMakeLists.txt "${project}")
endfunction()

# build_project(): builds it in ${WORK}/build. What is the library's own must not reach it.
function(build_project)
  run(${CMAKE_COMMAND} -S ${WORK}/project -B ${WORK}/build -G ${GENERATOR} ${OPTIONS}
    -D CMAKE_PREFIX_PATH=${WORK}/prefix -D CMAKE_BUILD_TYPE=Release -D CMAKE_EXPORT_COMPILE_COMMANDS=ON)
  run(${CMAKE_COMMAND} --build ${WORK}/build)
  file(READ ${WORK}/build/compile_commands.json commands)
  if(output MATCHES "warning" OR commands MATCHES " -W")
    message(FATAL_ERROR "the library's warnings reach its users:\n${output}\n${commands}")
  endif()
  if(commands MATCHES "_test\\.cpp|demo_host\\.cpp|KELMO_(LOCALIZER_)?BUILDING[^\n]*host\\.c")
    message(FATAL_ERROR "the library's tests, examples or definitions reach its users:\n${commands}")
  endif()
endfunction()

# run_host(name folder expected [working_folder]): runs the program of that folder, which has all that it needs. Its
# output must be that of the file.
function(run_host name folder expected)
  set(working_folder ${ARGN})
  file(READ ${expected} expected)
  file(GLOB host ${folder}/${name} ${folder}/${name}.exe)
  run(${EMULATOR} ${host})
  string(REPLACE "\r\n" "\n" output "${output}")
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${host} printed\n${output}\ninstead of\n${expected}")
  endif()
endfunction()

# ship_project(): installs it to ${WORK}/shipped, and removes what it was built with.
function(ship_project)
  run(${CMAKE_COMMAND} --install ${WORK}/build --prefix ${WORK}/shipped)
  if(EXISTS ${WORK}/shipped/include)
    message(FATAL_ERROR "the library's install rules reach its users")
  endif()
  file(REMOVE_RECURSE ${WORK}/prefix ${WORK}/build)
endfunction()
