# cmake --install installs both libraries, their headers and a CMake package: find_package(kelmo_Mestrel_Localizer) then
# gives the targets kelmo::localizer and kelmo::kelmo.
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/${PROJECT_NAME})

install(TARGETS kelmo_localizer kelmo EXPORT ${PROJECT_NAME})
install(FILES include/kelmo_localizer.h TYPE INCLUDE)
install(DIRECTORY include/kelmo TYPE INCLUDE)
if(MSVC)
  install(FILES ${runtime_folder}/kelmo_localizer_runtime.h TYPE INCLUDE)
endif()
# The pages for hosts and translators, and the examples, in folders as here: so their links stay valid
# (tests/docs/check_installed_pages.py).
install(FILES NOTICES.md TYPE DOC)
install(
  FILES
    docs/abi.md
    docs/checker.md
    docs/checker.svg
    docs/compatibility.md
    docs/formats.md
    docs/host_guide.md
    docs/kelmo.md
    docs/kelmo_from_others.md
    docs/messages.md
    docs/quantities.md
    docs/reliability.md
    docs/rules.md
    docs/values.md
    docs/visual_studio.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs
)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN CMakeLists.txt EXCLUDE)
# Units, which hosts copy and load.
install(DIRECTORY units DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(EXPORT ${PROJECT_NAME} FILE ${PROJECT_NAME}Config.cmake NAMESPACE kelmo:: DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/${PROJECT_NAME}ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
# A package for another system or processor must not be found. The linker would not notice another system.
string(TOLOWER "${CMAKE_SYSTEM_PROCESSOR}" processor)
string(REGEX REPLACE "^(amd64|x64)$" "x86_64" processor "${processor}")
string(REGEX REPLACE "^arm64$" "aarch64" processor "${processor}")
file(APPEND ${PROJECT_BINARY_DIR}/${PROJECT_NAME}ConfigVersion.cmake "
string(TOLOWER \"\${CMAKE_SYSTEM_PROCESSOR}\" processor)
string(REGEX REPLACE \"^(amd64|x64)\\$\" \"x86_64\" processor \"\${processor}\")
string(REGEX REPLACE \"^arm64\\$\" \"aarch64\" processor \"\${processor}\")
if(NOT CMAKE_SYSTEM_NAME STREQUAL \"${CMAKE_SYSTEM_NAME}\" OR (processor AND NOT processor STREQUAL \"${processor}\"))
  set(PACKAGE_VERSION \"\${PACKAGE_VERSION} (${CMAKE_SYSTEM_NAME}, ${processor})\")
  set(PACKAGE_VERSION_UNSUITABLE TRUE)
endif()
")
install(FILES ${PROJECT_BINARY_DIR}/${PROJECT_NAME}ConfigVersion.cmake DESTINATION ${package})

# For builds without CMake: pkg-config gives the options for kelmo. Its file names the folders relative to its own place,
# so that the installation can be moved. With Microsoft's compiler, hosts have no pkg-config.
if(NOT MSVC)
  file(RELATIVE_PATH PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  foreach(name LIBDIR INCLUDEDIR)
    file(RELATIVE_PATH ${name} ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_${name}})
  endforeach()
  set(LIBS "-L\${libdir} -lkelmo")
  if(MINGW)  # by its name, because -lkelmo with -static looks only for a static library
    set(LIBS "\${libdir}/${CMAKE_IMPORT_LIBRARY_PREFIX}kelmo${CMAKE_IMPORT_LIBRARY_SUFFIX}")
  endif()
  configure_file(cmake/kelmo.pc.in ${PROJECT_BINARY_DIR}/kelmo.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/kelmo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
if(MINGW)
  # For Microsoft's tools, which make an import library of it (lib /def:kelmo.def /machine:x64 /out:kelmo.lib). It names
  # the file, which the list of exports leaves out because of the number of the interface.
  file(READ host/kelmo_exports_windows.def exports)
  file(CONFIGURE OUTPUT kelmo.def CONTENT "LIBRARY kelmo-@PROJECT_VERSION_MAJOR@.dll\n@exports@" @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/kelmo.def TYPE LIB)
endif()
