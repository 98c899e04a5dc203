# As check_consumer.cmake, for kelmo: builds the hosts in C and C++ of the folder kelmo_host and compares what they print.
# With the installed library it also builds the host in C without CMake, by pkg-config if there is one, and the first
# program of docs/kelmo.md as that page says.
#   cmake -D BY=find_package|add_subdirectory -D WORK=folder -D LIBRARY_SOURCE=folder -D LIBRARY_BUILD=folder
#     -D GENERATOR=name -D OPTIONS=-D;name=value;... -D EMULATOR=program -D OBJDUMP=tool -D NM=tool
#     -D C_COMPILER=compiler -D PKG_CONFIG=program -P check_kelmo_consumer.cmake

include(${CMAKE_CURRENT_LIST_DIR}/consumer_project.cmake)

set(expected ${CMAKE_CURRENT_LIST_DIR}/kelmo_host/output.txt)
file(REMOVE_RECURSE ${WORK})
foreach(source host.c host.cpp)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/kelmo_host/${source} ${WORK}/project/${source} COPYONLY)
endforeach()
if(BY STREQUAL "find_package")
  install_library()
  # Both lists have the same names, and so has the installed file.
  file(READ ${LIBRARY_SOURCE}/host/kelmo_exports_windows.def names)
  string(REGEX REPLACE "^.*EXPORTS\n" "" names "${names}")
  string(REPLACE "    " "" names "${names}")
  file(WRITE ${WORK}/exported_names.txt "${names}")
  file(GLOB library ${WORK}/prefix/bin/kelmo-*.dll ${WORK}/prefix/lib/libkelmo.so.*.*.*)
  check_installed_file(${library} ${WORK}/exported_names.txt stripped exports)

  # The project of the page and its program, with the folder texts as a newcomer has it.
  set(first ${WORK}/first_texts)
  file(COPY ${CMAKE_CURRENT_LIST_DIR}/first_texts/CMakeLists.txt ${LIBRARY_SOURCE}/examples/first_texts.cpp
    ${LIBRARY_SOURCE}/examples/texts DESTINATION ${first})
  file(GLOB dll ${WORK}/prefix/bin/kelmo-*.dll)
  if(dll)
    file(COPY ${dll} DESTINATION ${first}/build)
    set(static -D CMAKE_EXE_LINKER_FLAGS=-static)
  endif()
  run(${CMAKE_COMMAND} -S ${first} -B ${first}/build -G ${GENERATOR} ${OPTIONS} -D CMAKE_PREFIX_PATH=${WORK}/prefix
    ${static})
  run(${CMAKE_COMMAND} --build ${first}/build)
  run_host(first_texts ${first}/build ${LIBRARY_SOURCE}/tests/data/examples/first_texts.txt ${first})
endif()
if(BY STREQUAL "find_package" AND PKG_CONFIG)
  # The compiler finds the library by pkg-config, the program finds it beside itself.
  file(MAKE_DIRECTORY ${WORK}/plain)
  set(ENV{PKG_CONFIG_LIBDIR} ${WORK}/prefix/lib/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs "kelmo >= 0.1" OUTPUT_VARIABLE options COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(options UNIX_COMMAND "${options}")
  file(GLOB beside ${WORK}/prefix/bin/kelmo-*.dll ${WORK}/prefix/lib/libkelmo.so.?)
  file(COPY ${beside} DESTINATION ${WORK}/plain FOLLOW_SYMLINK_CHAIN)
  set(ways -Wl,-rpath,$ORIGIN)
  if(dll)
    list(APPEND ways -static)
  endif()
  foreach(way ${ways})
    run(${C_COMPILER} -std=c99 ${WORK}/project/host.c ${options} -o ${WORK}/plain/host.exe ${way})
    run_host(host ${WORK}/plain ${expected})
  endforeach()
endif()
write_project(kelmo_host kelmo::kelmo kelmo)
build_project()
foreach(host c_host cpp_host)
  run_host(${host} ${WORK}/build ${expected})
endforeach()
ship_project()
foreach(host c_host cpp_host)
  run_host(${host} ${WORK}/shipped/bin ${expected})
endforeach()
