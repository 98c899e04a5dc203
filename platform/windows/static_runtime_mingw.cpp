// Replaces parts of the runtime that is linked into the DLL. The original parts would keep the
// notifications of threads on, or leak memory or slots into the host's process when the DLL is
// unloaded. Tested with GCC 12 and MinGW-w64 10, and with GCC 14 and MinGW-w64 12:
// module_windows_test.cpp and unload_test.cpp fail if another version leaks. Only the DLL is linked
// with this file.
#include <windows.h>

// The names are the runtime's own; no header declares them.
// NOLINTBEGIN(bugprone-reserved-identifier,misc-misplaced-const,misc-use-internal-linkage)
// NOLINTBEGIN(readability-identifier-naming)

// The start-up code calls the initialisers of thread-local objects through this pointer. The
// runtime's own definition would add a TLS directory to the DLL, and Windows would refuse to turn
// the notifications of threads off (dll_main_windows.cpp). The library has no thread-local object
// to initialise. Must stay null.
extern "C" {
extern const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;
}

namespace __gnu_cxx {
void __freeres();
}

namespace {

// When it starts, the runtime allocates memory for exceptions that are thrown when no memory is
// left: 73 KB (GCC 12) or 90 KB (GCC 14) for each load of the DLL. Without this object the memory
// would be freed only at the end of the process.
struct EmergencyMemory {
  ~EmergencyMemory() { __gnu_cxx::__freeres(); }
};

const EmergencyMemory emergencyMemory{};

}  // namespace

// The state of the current exceptions. The runtime would keep one state per thread. For that it
// would allocate one of the process's 1,088 slots of thread-local storage at the first exception
// and never free it: after enough loads and unloads of the DLL, the host would be terminated. One
// state for the whole library is enough: only one thread at a time calls the library, and no
// exception is handled between calls. (An exception that leaves the library is counted here as
// thrown, and in the host's runtime as caught. That is so in both cases, and the library does not
// use the count.) Layout and names follow the Itanium C++ ABI, section 2.2.2.
namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned int uncaughtExceptions;
};

namespace {
__cxa_eh_globals exceptionState = {};
}

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return &exceptionState; }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept { return &exceptionState; }

}  // namespace __cxxabiv1

// NOLINTEND(readability-identifier-naming)
// NOLINTEND(bugprone-reserved-identifier,misc-misplaced-const,misc-use-internal-linkage)
