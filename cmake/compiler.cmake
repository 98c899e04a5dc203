# Options for every source of the project. Hosts do not get them.

set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Each floating-point operation rounds separately, in the order written: values are the same to the last bit in every
# build.
if(MSVC)
  set(exact_numbers /fp:strict)  # older versions fuse operations under /fp:precise
else()
  set(exact_numbers -fno-fast-math -ffp-contract=off)
endif()
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:${exact_numbers}>")

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
  # The library's functions call each other directly, as on Windows and with Clang: no other library can replace them.
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fno-semantic-interposition>)
endif()

if(MINGW)
  add_link_options(-static)  # the DLL and all programs need only Windows
elseif(MSVC)
  # /EHs in place of CMake's /EHsc: with c the compiler assumes that no exception leaves an extern "C" function, but
  # GetError throws one.
  string(REPLACE "/EHsc" "" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
  add_compile_definitions(NOMINMAX)  # <windows.h> then defines no macro min, as with MinGW-w64
  add_compile_options(
    $<$<COMPILE_LANGUAGE:CXX>:/EHs>
    $<$<COMPILE_LANGUAGE:CXX>:/permissive->
    $<$<COMPILE_LANGUAGE:C,CXX>:/utf-8>
  )
endif()
