# Warnings are on in the project's own builds, and off if another project builds the library. They are errors with the
# compilers of this list, with which the project builds without warnings. CMAKE_COMPILE_WARNING_AS_ERROR decides for all
# compilers. tests/build/check_warnings.cmake and tests/build/check_known_compilers.cmake check this.
set(compilers_without_warnings GNU-12 GNU-14 Clang-14 Clang-19)

add_library(kelmo_localizer_warnings INTERFACE)
if(KELMO_LOCALIZER_STRICT)
  if(MSVC)
    set(options /W4)
  else()
    set(options -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  endif()
  target_compile_options(kelmo_localizer_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:${options}>")

  set(are_known TRUE)
  foreach(language C CXX)
    string(REGEX REPLACE "[.].*" "" compiler "${CMAKE_${language}_COMPILER_ID}-${CMAKE_${language}_COMPILER_VERSION}")
    if(NOT compiler IN_LIST compilers_without_warnings)
      set(are_known FALSE)
    endif()
  endforeach()
  if(NOT DEFINED CMAKE_COMPILE_WARNING_AS_ERROR AND are_known)
    set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
  endif()
elseif(NOT PROJECT_IS_TOP_LEVEL AND NOT MSVC)
  # The host's options, such as -Werror, must not affect the library's sources.
  target_compile_options(kelmo_localizer_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:-w>")
endif()
