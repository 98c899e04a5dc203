# Makes a fault in the library or its host harder to exploit. tests/abi/check_hardening.cmake checks each protection in
# the built file. None of them needs another library (on 64-bit ARM the stack protector needs the loader, which every
# program has).
#   Linux: stack protector, checked copying in the C library, immediate binding, relocations that become read-only.
#   Windows: high-entropy address space layout randomisation, data that cannot be executed. Microsoft's compiler has a
#   stack protector by default.

# The file and the static libraries that are in it.
function(kelmo_harden library)
  if(MSVC)
    target_link_options(${library} PRIVATE /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
  elseif(WIN32)
    target_link_options(${library} PRIVATE -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
  else()
    foreach(target ${ARGV})
      target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
      # Only for shipped builds: it needs optimisation and does not fit sanitizers. A packager may have set a level
      # already.
      if(NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
        target_compile_options(${target} PRIVATE
          "$<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CONFIG:Release,RelWithDebInfo,MinSizeRel>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
      endif()
    endforeach()
    target_link_options(${library} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
  endif()
endfunction()
