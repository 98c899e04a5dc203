# Compiles a source with one warning and pretends that the compiler is another one. The warning must be an error with
# the compilers that are known to build the project without warnings, and with no others. A user can override that.
# Without KELMO_LOCALIZER_STRICT, as inside another project, there is no warning.
#   cmake -D SOURCE=folder -D WORK=folder -D GENERATOR=name -D COMPILER=file -P check_known_compilers.cmake

file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/CMakeLists.txt "
cmake_minimum_required(VERSION 3.25)
project(compilers LANGUAGES CXX)
string(REPLACE - \";\" id_and_version \${AS})
list(GET id_and_version 0 CMAKE_CXX_COMPILER_ID)
list(GET id_and_version 1 CMAKE_CXX_COMPILER_VERSION)
set(CMAKE_C_COMPILER_ID \${CMAKE_CXX_COMPILER_ID})
set(CMAKE_C_COMPILER_VERSION \${CMAKE_CXX_COMPILER_VERSION})
include(\${WARNINGS})
add_library(warning OBJECT \${AS}.cpp)
target_link_libraries(warning PRIVATE kelmo_localizer_warnings)
")

# expect(ends says as options...): the build with the compiler `as` passes or fails, and reports an error, a warning or
# nothing.
function(expect ends says as)
  list(JOIN ARGN " " options)
  string(STRIP "${as} ${options}" what)
  file(WRITE ${WORK}/${as}.cpp "int Deliberate(int unused) { return 0; }  // ${what}\n")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${WORK} -B ${WORK}/build -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${COMPILER} -D AS=${as}
      -D WARNINGS=${SOURCE}/cmake/warnings.cmake -U CMAKE_COMPILE_WARNING_AS_ERROR -D KELMO_LOCALIZER_STRICT=ON ${ARGN}
    COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK}/build
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(result EQUAL 0)
    set(ended passes)
  else()
    set(ended fails)
  endif()
  set(said nothing)
  if(output MATCHES "(error|warning): unused parameter")
    set(said ${CMAKE_MATCH_1})
  endif()
  if(NOT "${ended} ${said}" STREQUAL "${ends} ${says}")
    message(FATAL_ERROR "with ${what} the build ${ended} and says ${said}, not ${ends} and ${says}:\n${output}")
  endif()
endfunction()

foreach(known GNU-12.2.0 GNU-14.2.0 Clang-14.0.6 Clang-19.1.7)
  expect(fails error ${known})
endforeach()
foreach(other GNU-13.3.0 GNU-15.1.0 GNU-120.1.0 Clang-20.1.0 AppleClang-14.0.3)
  expect(passes warning ${other})
endforeach()
expect(passes warning GNU-12.2.0 -D CMAKE_COMPILE_WARNING_AS_ERROR=OFF)
expect(fails error GNU-15.1.0 -D CMAKE_COMPILE_WARNING_AS_ERROR=ON)
expect(passes nothing GNU-12.2.0 -D KELMO_LOCALIZER_STRICT=OFF)
