# Long runs, one at a time: ctest --preset linux-heavy, ctest --preset windows-heavy.

# Only in the configuration `heavy` of CTest, so that a plain ctest does not take hours.
function(kelmo_add_long_run name)
  add_test(NAME ${name} CONFIGURATIONS heavy COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES LABELS heavy TIMEOUT 3600 RUN_SERIAL ON)
endfunction()

# Runs a program under valgrind, on Linux.
function(kelmo_add_memcheck program)
  if(CMAKE_CROSSCOMPILING OR CMAKE_HOST_WIN32)
    return()
  endif()
  kelmo_add_long_run(memcheck_${program} valgrind --quiet --error-exitcode=1 --leak-check=full
    --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect
    --soname-synonyms=somalloc=nouserintercepts  # keeps operator new of the program
    $<TARGET_FILE:${program}> ${ARGN})
  # Without AVX2, because glibc's comparison of wide texts with AVX2 also reads bytes after their ends.
  set_tests_properties(memcheck_${program} PROPERTIES ENVIRONMENT
    "LC_ALL=C.UTF-8;GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX2_Usable,-AVX512VL")
  kelmo_set_own_folder(memcheck_${program})
endfunction()
