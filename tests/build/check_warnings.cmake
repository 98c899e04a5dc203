# Checks that the warnings of the project's own builds are enabled and are errors: every source is compiled with the
# options, and a deliberately wrong source does not compile, with the expected error in each marked line.
#   cmake -D BUILD=folder -D TARGET=name -D SOURCE=file -P check_warnings.cmake

file(STRINGS ${BUILD}/compile_commands.json commands ENCODING UTF-8 REGEX "^ *\"command\": ")
if(NOT commands)
  message(FATAL_ERROR "no command was read from ${BUILD}/compile_commands.json")
endif()
set(switches " -Wall -Wextra -Wpedantic -Wconversion -Wshadow .*-Werror ")
set(switches_off " (-w|-Wno-[^ ]*) ")
# Not C++, not part of the project, or deliberately faulty.
set(others " \"[^ ]*windres |[.]S(\\\\\")?\"|-c /usr/src/googletest/[^ ]*\"|/tests/build/deliberate_faults[.]cpp(\\\\\")?\"")
foreach(command IN LISTS commands)
  if(NOT command MATCHES "${others}" AND (NOT command MATCHES "${switches}" OR command MATCHES "${switches_off}"))
    message(FATAL_ERROR "compiled without warnings as errors:\n${command}")
  endif()
endforeach()

execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target ${TARGET}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(result EQUAL 0)
  message(FATAL_ERROR "${SOURCE} compiles in spite of its warnings")
endif()

file(READ ${SOURCE} source)
string(REPLACE ";" "," source "${source}")  # a semicolon separates list elements
string(REPLACE "\n" ";" lines "${source}")
set(number 0)
set(expected 0)
foreach(line IN LISTS lines)
  math(EXPR number "${number} + 1")
  if(line MATCHES "// expect: ([a-z-]+)$")
    set(switch ${CMAKE_MATCH_1})
    math(EXPR expected "${expected} + 1")
    if(NOT output MATCHES "deliberate_warnings.cpp:${number}:[0-9]+: error: [^\n]*\\[-Werror=${switch}")
      message(FATAL_ERROR "no error of -W${switch} in line ${number} of ${SOURCE}, but\n${output}")
    endif()
  endif()
endforeach()
string(REGEX MATCHALL ": error: " errors "${output}")
list(LENGTH errors found)
if(expected LESS 5 OR NOT found EQUAL expected)
  message(FATAL_ERROR "expected ${expected} errors, at least 5, but found ${found}:\n${output}")
endif()
