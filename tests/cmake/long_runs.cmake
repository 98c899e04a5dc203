# Long runs, each by itself: ctest --preset linux-heavy, ctest --preset windows-heavy.

# They belong to a configuration of CTest of their own, so that a plain ctest does not take hours.
function(kelmo_add_long_run name)
  add_test(NAME ${name} CONFIGURATIONS heavy COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES LABELS heavy TIMEOUT 3600 RUN_SERIAL ON)
endfunction()

# A program under valgrind, which is for Linux.
function(kelmo_add_memcheck program)
  if(CMAKE_CROSSCOMPILING OR CMAKE_HOST_WIN32)
    return()
  endif()
  kelmo_add_long_run(memcheck_${program} valgrind --quiet --error-exitcode=1 --leak-check=full
    --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect
    --soname-synonyms=somalloc=nouserintercepts  # operator new stays that of the program
    $<TARGET_FILE:${program}> ${ARGN})
  # glibc compares wide texts 32 bytes at a time where the processor can: also what lies behind their ends.
  set_tests_properties(memcheck_${program} PROPERTIES ENVIRONMENT
    "LC_ALL=C.UTF-8;GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX2_Usable,-AVX512VL")
  kelmo_set_own_folder(memcheck_${program})
endfunction()
