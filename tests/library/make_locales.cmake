# Makes the locale de_DE.UTF-8, which has a decimal comma, in the folder that LOCPATH names. No locale of a fresh Debian
# has one.
#   cmake -D FOLDER=folder -P make_locales.cmake
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND localedef --no-archive -i de_DE -f UTF-8 ${FOLDER}/de_DE.UTF-8
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "localedef, of Debian's packages libc-bin and locales, made no locale (${result}):\n${output}")
endif()
