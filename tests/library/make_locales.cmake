# Makes locales in the folder that LOCPATH names: with a decimal comma, with groups of two digits, and with another
# encoding than UTF-8. A fresh Debian has none of them.
#   cmake -D FOLDER=folder -P make_locales.cmake
file(MAKE_DIRECTORY ${FOLDER})
foreach(locale de_DE.UTF-8 en_IN.UTF-8 cs_CZ.ISO-8859-2)
  string(REGEX MATCH "^([^.]+)[.](.+)$" locale ${locale})
  execute_process(COMMAND localedef --no-archive -i ${CMAKE_MATCH_1} -f ${CMAKE_MATCH_2} ${FOLDER}/${locale}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR
      "localedef, of Debian's packages libc-bin and locales, did not make ${locale} (${result}):\n${output}")
  endif()
endforeach()
