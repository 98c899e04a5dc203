# Reads from a built library which protections it has, and fails unless it lacks exactly the named ones: none, if it is to
# be shipped.
#   cmake -D LIBRARY=file -D OBJDUMP=tool [-D LACKS=names] -P check_hardening.cmake

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
set(lacking)
function(expect protection text pattern)
  if(NOT text MATCHES "${pattern}")
    set(lacking ${lacking} "${protection}" PARENT_SCOPE)
  endif()
endfunction()

# What cannot be read lacks everything, also where that is expected.
function(expect_to_read pattern)
  if(NOT "${headers}${symbols}" MATCHES "${pattern}")
    message(FATAL_ERROR "${LIBRARY} was not read:\n${headers}${symbols}")
  endif()
endfunction()

if(LIBRARY MATCHES "\\.dll$")
  expect_to_read("file format pei-x86-64\n.*\nDllCharacteristics")
  expect("any address" "${headers}" "\n\t+DYNAMIC_BASE\n")
  expect("addresses of 64 bits" "${headers}" "\n\t+HIGH_ENTROPY_VA\n")
  expect("data that is not run" "${headers}" "\n\t+NX_COMPAT\n")
  # With such a directory Windows refuses to turn the notifications of threads off, without a word.
  expect("no TLS directory" "${headers}" "\nEntry 9 0+ 0+ Thread Storage Directory")
else()
  execute_process(COMMAND ${OBJDUMP} -T ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  expect_to_read("file format elf64-(x86-64|littleaarch64)\n.*\nDynamic Section:\n.*\nDYNAMIC SYMBOL TABLE:\n[0-9a-f]+ ")
  expect("a part that becomes read-only" "${headers}" "\n +RELRO off ")
  expect("binding at the load" "${headers}" "\n +FLAGS +0x0*[8-9a-f]\n")  # DF_BIND_NOW
  expect("a stack that is not run" "${headers}" "\n +STACK off [^\n]*\n[^\n]* flags rw-\n")
  expect("a checked stack" "${symbols}" " __stack_chk_fail\n")
  expect("checked copying" "${symbols}" " __[a-z]+_chk\n")
  # A call that looks for its function in other modules could find the copy of an inline one in a plugin of the host.
  execute_process(COMMAND ${OBJDUMP} -R ${LIBRARY} OUTPUT_VARIABLE relocations COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "_ZN9KelmoLibs" "(its own)" relocations "${relocations}")
  expect("calls of its own functions alone" "${relocations}" "\nDYNAMIC RELOCATION RECORDS\n[^(]*$")
endif()

if(NOT "${lacking}" STREQUAL "${LACKS}")
  message(FATAL_ERROR "${LIBRARY} lacks\n${lacking}\nand not\n${LACKS}\nIts headers:\n${headers}")
endif()
