# Checks that the project with its tests can be configured on Windows with Microsoft's compiler, without such a machine.
# Clang replaces that compiler; under the name clang-cl it reads the same options. Nothing is built.
#   cmake -D SOURCE=folder -D WORK=folder -P check_windows.cmake

file(REMOVE_RECURSE ${WORK})
find_program(clang clang REQUIRED)
file(MAKE_DIRECTORY ${WORK})
file(CREATE_LINK ${clang} ${WORK}/clang-cl SYMBOLIC)
file(WRITE ${WORK}/on_windows.cmake "
set(CMAKE_CROSSCOMPILING FALSE)
set(CMAKE_HOST_WIN32 TRUE)
set(CMAKE_HOST_UNIX FALSE)
")
file(WRITE ${WORK}/GTestConfig.cmake "add_library(GTest::gtest INTERFACE IMPORTED)\n")
set(ENV{CL} --target=x86_64-pc-windows-msvc)
foreach(name _CL_ CFLAGS CXXFLAGS LDFLAGS)
  set(ENV{${name}})
endforeach()

execute_process(
  COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE} -B ${WORK}/build
    -D CMAKE_SYSTEM_NAME=Windows -D CMAKE_SYSTEM_PROCESSOR=AMD64 -D CMAKE_BUILD_TYPE=Release
    -D CMAKE_C_COMPILER=${WORK}/clang-cl -D CMAKE_CXX_COMPILER=${WORK}/clang-cl
    -D CMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY  # the libraries for linking a program are missing
    -D CMAKE_PROJECT_INCLUDE=${WORK}/on_windows.cmake
    -D GTest_DIR=${WORK}
    -D KELMO_LOCALIZER_TESTS=ON -D KELMO_LOCALIZER_EXAMPLES=ON
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()
execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${WORK}/build --show-only OUTPUT_VARIABLE tests ERROR_QUIET)
foreach(name unit_tests model_test values_test demo_host_output)
  if(NOT tests MATCHES " ${name}\n")
    message(FATAL_ERROR "${name} is missing:\n${tests}")
  endif()
endforeach()
