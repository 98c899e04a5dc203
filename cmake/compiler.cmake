# What every source of the project is compiled with. None of it reaches those who use the library.

set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Each operation on numbers rounds on its own, in the order written: values are the same to the last bit in every build.
if(MSVC)
  set(exact_numbers /fp:strict)  # older versions of it fuse under /fp:precise
else()
  set(exact_numbers -fno-fast-math -ffp-contract=off)
endif()
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:${exact_numbers}>")

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
  # The library's members call one another directly, as on Windows and with Clang: no other library is asked for them.
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fno-semantic-interposition>)
endif()

if(MINGW)
  add_link_options(-static)  # the DLL, as every program here, needs nothing but Windows
elseif(MSVC)
  # /EHs, not the /EHsc that CMake puts there: with c the compiler assumes that no exception leaves an extern "C"
  # function, and GetError throws one.
  string(REPLACE "/EHsc" "" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
  add_compile_definitions(NOMINMAX)  # as GCC's library does: std::min is no macro of <windows.h>
  add_compile_options(
    $<$<COMPILE_LANGUAGE:CXX>:/EHs>
    $<$<COMPILE_LANGUAGE:CXX>:/permissive->
    $<$<COMPILE_LANGUAGE:C,CXX>:/utf-8>
  )
endif()
