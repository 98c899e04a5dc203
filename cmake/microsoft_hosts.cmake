# What hosts get from a library of Microsoft's compiler beside the header and the library itself.
if(NOT MSVC)
  return()
endif()

option(KELMO_LOCALIZER_HOSTS_EHS "Compile hosts with /EHs /EHc-, so that they can catch what GetError throws" ON)
if(KELMO_LOCALIZER_HOSTS_EHS)
  # Behind the /EHsc that CMake puts in front, /EHs alone would change nothing: c must be taken back.
  target_compile_options(kelmo_localizer INTERFACE "$<$<COMPILE_LANG_AND_ID:CXX,MSVC>:/EHs;/EHc->")
endif()

# The runtime of this build, for kelmo_localizer.h, which compares it with that of the host, and of the library's own
# sources. A file, and no definition of the target: that would follow the configuration of the host, so that a debug host
# were told that an installed release build is a debug build.
set(runtime MultiThreaded$<$<CONFIG:Debug>:Debug>DLL)
if(CMAKE_MSVC_RUNTIME_LIBRARY)
  set(runtime ${CMAKE_MSVC_RUNTIME_LIBRARY})
endif()
set(runtime_folder ${PROJECT_BINARY_DIR}/include/$<CONFIG>)
file(GENERATE OUTPUT ${runtime_folder}/kelmo_localizer_runtime.h CONTENT
"/* The runtime that this copy of the library was built with, for kelmo_localizer.h. It decides: what
 * a host has defined itself, perhaps for another copy, does not count. */
#undef KELMO_LOCALIZER_STATIC_RUNTIME
#undef KELMO_LOCALIZER_DEBUG_RUNTIME
$<$<IN_LIST:${runtime},MultiThreaded;MultiThreadedDebug>:#define KELMO_LOCALIZER_STATIC_RUNTIME>
$<$<IN_LIST:${runtime},MultiThreadedDebug;MultiThreadedDebugDLL>:#define KELMO_LOCALIZER_DEBUG_RUNTIME>
")
foreach(target kelmo_localizer kelmo_localizer_core)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${runtime_folder}>)
endforeach()
