# What hosts get in addition from a library that Microsoft's compiler has built.
if(NOT MSVC)
  return()
endif()

option(KELMO_LOCALIZER_HOSTS_EHS "Compile hosts with /EHs /EHc-, so that they can catch what GetError throws" ON)
if(KELMO_LOCALIZER_HOSTS_EHS)
  # After CMake's /EHsc, /EHs alone changes nothing: /EHc- removes the c.
  target_compile_options(kelmo_localizer INTERFACE "$<$<COMPILE_LANG_AND_ID:CXX,MSVC>:/EHs;/EHc->")
endif()

# kelmo_localizer.h compares the runtime of this build with that of the host and of the library's own sources. It reads
# the runtime from a file. A definition of the target would follow the configuration of the host: for a debug host, an
# installed release build would seem to be a debug build.
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
