# What makes the shipped library harder to misuse where its code, or its host's, has a fault. None of it takes another
# library (on 64-bit ARM the stack protector names the loader, which every program has), and
# tests/abi/check_hardening.cmake reads each from the built file.
#   Linux: the stack is checked before a function returns, the C library checks what it copies, and what the loader has
#   resolved, all of it at the load, is read-only from then on.
#   Windows: code and data lie where nobody can know, anywhere in 64 bits, and data is not run. Microsoft's compiler
#   checks the stack of its own accord.

function(kelmo_harden library core)
  if(MSVC)
    target_link_options(${library} PRIVATE /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
  elseif(WIN32)
    target_link_options(${library} PRIVATE -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
  else()
    foreach(target ${library} ${core})
      target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
      # It needs an optimising compiler, and knows nothing of sanitizers: for the builds that are shipped. Who packages the
      # library may have chosen a level already.
      if(NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
        target_compile_options(${target} PRIVATE
          "$<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CONFIG:Release,RelWithDebInfo,MinSizeRel>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
      endif()
    endforeach()
    target_link_options(${library} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
  endif()
endfunction()
