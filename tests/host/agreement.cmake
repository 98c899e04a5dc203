# Random calls of the built files of both libraries in one process.
kelmo_add_test_program(kelmo_agreement_test agreement_test.cpp)
target_link_libraries(kelmo_agreement_test PRIVATE kelmo_model kelmo::kelmo)
add_dependencies(kelmo_agreement_test kelmo_localizer)
add_dependencies(kelmo_tests kelmo_agreement_test)
if(KELMO_LOCALIZER_INSTRUMENTED)
  set(rounds --rounds=300)
elseif(WIN32 OR CMAKE_CROSSCOMPILING)  # files are slower there, and loading the library
  set(rounds --rounds=200)
endif()
add_test(NAME kelmo_agreement_test COMMAND kelmo_agreement_test ${rounds})
kelmo_set_own_folder(kelmo_agreement_test)
kelmo_add_long_run(kelmo_long_agreement_test kelmo_agreement_test --rounds=100000)
kelmo_set_own_folder(kelmo_long_agreement_test)
