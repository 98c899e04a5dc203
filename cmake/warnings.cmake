# Warnings of the project's own code, on and fatal in its own builds only: whoever builds the library inside another
# project sees none. tests/build/check_warnings.cmake proves that they bite.
add_library(kelmo_localizer_warnings INTERFACE)
if(KELMO_LOCALIZER_STRICT)
  if(MSVC)
    set(options /W4 /WX)
  else()
    set(options -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  endif()
  target_compile_options(kelmo_localizer_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:${options}>")
endif()
