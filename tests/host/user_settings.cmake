# The number format and the languages of users of several regions. Wine takes its user's settings from the environment.
# On Windows itself only those of the user who runs the tests count, so the tests do not run there. The locales are those
# of tests/library.
if(NOT TARGET regional_settings_test)
  return()
endif()
get_property(locales DIRECTORY ${PROJECT_SOURCE_DIR}/tests/library PROPERTY BINARY_DIR)
# kelmo_add_user(name locale format languages)
function(kelmo_add_user name locale format languages)
  add_test(NAME kelmo_user_${name} COMMAND kelmo_tests --gtest_filter=UserSettings.*)
  set(environment LC_ALL=${locale} KELMO_WINE_LOCALE=${locale} LANGUAGE= LOCPATH=${locales}/locales
    "KELMO_EXPECTED_FORMAT=${format}" "KELMO_EXPECTED_LANGUAGES=${languages}")
  list(APPEND environment ASAN_OPTIONS=detect_leaks=0)  # newlocale of glibc does not free what LOCPATH says
  set_tests_properties(kelmo_user_${name} PROPERTIES ENVIRONMENT "${environment}" FIXTURES_REQUIRED locales)
  kelmo_run_alone_under_wine(kelmo_user_${name})
endfunction()
kelmo_add_user(german de_DE.UTF-8 "minus - decimal , group . 3 3" de-DE)
kelmo_add_user(indian en_IN.UTF-8 "minus - decimal . group , 3 2" en-IN)
if(WIN32)
  kelmo_add_user(czech cs_CZ.UTF-8 "minus - decimal , group <C2><A0> 3 3" cs-CZ)
else()
  # The mark is not in this encoding.
  kelmo_add_user(czech cs_CZ.ISO-8859-2 "minus - decimal , group <E2><80><AF> 3 3" cs-CZ)
  kelmo_add_user(classic C "minus - decimal . group  0 0" "")
  # The system does not have these locales.
  kelmo_add_user(without_locale fr_CH.UTF-8 "minus - decimal , group <E2><80><AF> 3 3" fr-CH)
  kelmo_add_user(other_digits ar_EG.UTF-8 none ar-EG)
  kelmo_add_user(unknown xx_XX.UTF-8 none xx-XX)
endif()
