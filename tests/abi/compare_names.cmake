# compare_names(what names file): fails unless the sorted names are the lines of the file. It also fails without any
# name: then the caller has read nothing.
function(compare_names what names file)
  if(names STREQUAL "")
    message(FATAL_ERROR "no name was read from ${what}")
  endif()
  list(SORT names)
  list(JOIN names "\n" names)
  file(READ ${file} expected)
  string(STRIP "${expected}" expected)
  if(NOT names STREQUAL expected)
    message(FATAL_ERROR "${what} has\n${names}\nbut the list ${file} says\n${expected}")
  endif()
endfunction()
