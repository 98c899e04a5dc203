# Exports, dependencies and protections of the built file, by the checks of tests/abi.
set(abi ${PROJECT_SOURCE_DIR}/tests/abi)
set(exports_map ${PROJECT_SOURCE_DIR}/host/kelmo_exports_posix.map)
add_test(NAME kelmo_declared_names
  COMMAND ${CMAKE_COMMAND}
    -D HEADER=${PROJECT_SOURCE_DIR}/include/kelmo/kelmo.h
    -D MAP=${exports_map}
    -D DEF=${PROJECT_SOURCE_DIR}/host/kelmo_exports_windows.def
    -D "AWAITED=^kelmo_(view_text|view_format)"
    -P ${abi}/check_declared_names.cmake
)
if(NOT MSVC)
  # One list for both systems: that of the linker.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports_map})
  file(STRINGS ${exports_map} exported REGEX "^    kelmo_[a-z0-9_]+;$")
  list(TRANSFORM exported REPLACE "[ ;]" "")
  list(JOIN exported "\n" exported)
  set(exported_names ${CMAKE_CURRENT_BINARY_DIR}/exported_names.txt)
  file(WRITE ${exported_names} "${exported}\n")
  add_test(NAME kelmo_exported_names
    COMMAND ${CMAKE_COMMAND}
      -D LIBRARY=$<TARGET_FILE:kelmo>
      -D EXPECTED=${exported_names}
      -D OBJDUMP=${CMAKE_OBJDUMP}
      -D NM=${CMAKE_NM}
      -P ${abi}/check_exports.cmake
  )
  add_test(NAME kelmo_one_definition
    COMMAND ${CMAKE_COMMAND}
      -D HEADER=${PROJECT_SOURCE_DIR}/include/kelmo/kelmo.h
      -D MACRO=KELMO
      -D CONTAINS=kelmo_view_find
      -D COMPILER=${CMAKE_CXX_COMPILER}
      -P ${abi}/check_one_definition.cmake
  )
endif()

# Only for the shipped files: other builds contain sanitizers or debugging aids.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT MSVC)
  string(TOLOWER ${CMAKE_SYSTEM_NAME} needed_libraries)
  if(NOT WIN32 AND CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
    string(APPEND needed_libraries _aarch64)
  endif()
  set(needed_libraries ${abi}/needed_libraries_${needed_libraries}.txt)
  add_test(NAME kelmo_needed_libraries
    COMMAND ${CMAKE_COMMAND}
      -D LIBRARY=$<TARGET_FILE:kelmo>
      -D EXPECTED=${needed_libraries}
      -D OBJDUMP=${CMAKE_OBJDUMP}
      -D PLAIN=libkelmo.so
      -D VERSION=${PROJECT_VERSION}
      -P ${abi}/check_dependencies.cmake
  )
  if(WIN32)  # the runtime has the state of its exceptions for each thread
    set(lacking "no TLS directory")
  else()
    set(lacking)
  endif()
  add_test(NAME kelmo_hardening
    COMMAND ${CMAKE_COMMAND}
      -D LIBRARY=$<TARGET_FILE:kelmo>
      -D OBJDUMP=${CMAKE_OBJDUMP}
      -D "LACKS=${lacking}"
      -P ${abi}/check_hardening.cmake
  )
  kelmo_add_refusals(built_files NAME kelmo_refusals_of_built_files ${CMAKE_COMMAND} ${CMAKE_OBJDUMP} ${CMAKE_NM}
    $<TARGET_FILE:kelmo> ${PROJECT_VERSION} ${needed_libraries} ${exported_names} ${lacking})
endif()
