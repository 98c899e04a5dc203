// Replaces parts of the runtime that is linked into the DLL: they would keep the notifications of
// threads on, or leave something behind in the host's process when the DLL is unloaded. Shown for
// GCC 12 with MinGW-w64 10 and for GCC 14 with MinGW-w64 12: tests/module_windows_test.cpp and
// tests/unload_test.cpp fail where another version leaves something behind. Only the DLL is linked
// with this file.
#include <windows.h>

// The names are the runtime's own; no header declares them.
// NOLINTBEGIN(bugprone-reserved-identifier,misc-misplaced-const,misc-use-internal-linkage)
// NOLINTBEGIN(readability-identifier-naming)

// The start-up code runs the initialisers of thread-local objects through this pointer. Its own
// definition would come with a TLS directory for the DLL, and for a module that has one Windows
// refuses to turn the notifications of threads off (load_notification_windows.cpp). The library has
// no thread-local object, so there is nothing to run. Must stay null.
extern "C" {
extern const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;
}

namespace __gnu_cxx {
void __freeres();
}

namespace {

// At its start the runtime sets memory aside for exceptions that are thrown when there is none
// left, 73 KB for each load of the DLL (GCC 12) or 90 KB (GCC 14), and leaves it to the end of the
// process.
struct EmergencyMemory {
  ~EmergencyMemory() { __gnu_cxx::__freeres(); }
};

const EmergencyMemory emergencyMemory{};

}  // namespace

// The state of the exceptions in flight. The runtime would keep one per thread, and for that take
// one of the process's 1,088 slots of thread-local storage at the first exception and never give it
// back: a host that has unloaded the DLL often enough is ended. One for the whole library does as
// well, because it is called from one thread at a time and no exception is being handled between
// calls. (One that leaves the library is counted here as thrown and by the host's own runtime as
// caught, whichever way it is kept; nothing in the library asks for that count.) Layout and names
// are those of the Itanium C++ ABI, section 2.2.2.
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
