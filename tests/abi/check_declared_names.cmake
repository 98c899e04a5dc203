# Compares the functions that kelmo.h declares with the lists that the linkers read.
#   cmake -D HEADER=file -D MAP=file -D DEF=file -P check_declared_names.cmake

# read_names(result file regex): the sorted names in the file. The regex has one group, which is the name; a semicolon
# is a comma for it.
function(read_names result file regex)
  file(READ ${file} text)
  string(REPLACE ";" "," text "${text}")
  string(REGEX MATCHALL "${regex}" rows "${text}")
  list(TRANSFORM rows REPLACE "${regex}" "\\1")
  if(rows STREQUAL "")
    message(FATAL_ERROR "no name was read from ${file}")
  endif()
  list(SORT rows)
  set(${result} ${rows} PARENT_SCOPE)
endfunction()

read_names(declared ${HEADER} "KELMO_API [^(,]*[ *](kelmo_[a-z0-9_]+)\\(")
read_names(in_map ${MAP} "\n    (kelmo_[a-z0-9_]+),")
read_names(in_def ${DEF} "\n    (kelmo_[a-z0-9_]+)")
list(JOIN declared "\n" declared)
foreach(list map def)
  list(JOIN in_${list} "\n" names)
  if(NOT names STREQUAL declared)
    string(TOUPPER ${list} file)
    message(FATAL_ERROR "${${file}} has\n${names}\nbut ${HEADER} declares\n${declared}")
  endif()
endforeach()
