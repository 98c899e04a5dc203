# compare_names(what names file): fails unless the names, sorted, are the lines of the file. No names at all are a fault of
# what has read them.
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
