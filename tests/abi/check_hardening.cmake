# Checks the protections of a built library. Fails unless exactly the named ones are missing. A shipped library must
# have all.
#   cmake -D LIBRARY=file -D OBJDUMP=tool [-D LACKS=names] -P check_hardening.cmake

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
set(lacking)
function(expect protection text pattern)
  if(NOT text MATCHES "${pattern}")
    set(lacking ${lacking} "${protection}" PARENT_SCOPE)
  endif()
endfunction()

# A file that was not read would lack all protections, which may be what LACKS says.
function(expect_to_read pattern)
  if(NOT "${headers}${symbols}" MATCHES "${pattern}")
    message(FATAL_ERROR "${LIBRARY} was not read:\n${headers}${symbols}")
  endif()
endfunction()

if(LIBRARY MATCHES "\\.dll$")
  expect_to_read("file format pei-x86-64\n.*\nDllCharacteristics")
  expect("ASLR" "${headers}" "\n\t+DYNAMIC_BASE\n")
  expect("high-entropy ASLR" "${headers}" "\n\t+HIGH_ENTROPY_VA\n")
  expect("non-executable data" "${headers}" "\n\t+NX_COMPAT\n")
  # With a TLS directory Windows silently refuses to disable thread notifications.
  expect("no TLS directory" "${headers}" "\nEntry 9 0+ 0+ Thread Storage Directory")
else()
  execute_process(COMMAND ${OBJDUMP} -T ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  expect_to_read("file format elf64-(x86-64|littleaarch64)\n.*\nDynamic Section:\n.*\nDYNAMIC SYMBOL TABLE:\n[0-9a-f]+ ")
  expect("RELRO" "${headers}" "\n +RELRO off ")
  expect("immediate binding" "${headers}" "\n +FLAGS +0x0*[8-9a-f]\n")  # DF_BIND_NOW
  expect("non-executable stack" "${headers}" "\n +STACK off [^\n]*\n[^\n]* flags rw-\n")
  expect("stack protector" "${symbols}" " __stack_chk_fail\n")
  expect("checked copying" "${symbols}" " __[a-z]+_chk\n")
  # A call through a relocation could reach another module's copy of an inline function, as in a plugin of the host.
  execute_process(COMMAND ${OBJDUMP} -R ${LIBRARY} OUTPUT_VARIABLE relocations COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "_ZN9KelmoLibs" "(its own)" relocations "${relocations}")
  expect("direct calls of its own functions" "${relocations}" "\nDYNAMIC RELOCATION RECORDS\n[^(]*$")
endif()

if(NOT "${lacking}" STREQUAL "${LACKS}")
  message(FATAL_ERROR "${LIBRARY} lacks:\n${lacking}\nexpected:\n${LACKS}\nIts headers:\n${headers}")
endif()
