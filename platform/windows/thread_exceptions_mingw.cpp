// Replaces the part of the runtime that has the current exceptions of each thread, in a DLL that any
// number of threads may call. The runtime's own would take one of the process's 1,088 slots of
// thread-local storage at the first exception and never free it: after enough loads and unloads of
// the DLL, the host would be terminated. It would also leak the memory for exceptions that are
// thrown when no memory is left. Tested with GCC 12 and MinGW-w64 10; kelmo_unload_test fails if
// another version leaks.
#include <windows.h>

// The names are the runtime's own; no header declares them.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)

namespace __gnu_cxx {
void __freeres();
}

// Layout and names follow the Itanium C++ ABI, section 2.2.2.
namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned int uncaughtExceptions;
};

namespace {

void WINAPI Free(void* state) noexcept { ::HeapFree(::GetProcessHeap(), 0, state); }

// The system calls Free for a thread that ends, and, in the destructor, for all that have a state.
class ThreadStates {
 public:
  ThreadStates() noexcept : slot_(::FlsAlloc(&Free)) {}
  ThreadStates(const ThreadStates&) = delete;
  ThreadStates& operator=(const ThreadStates&) = delete;
  ~ThreadStates() {
    if (slot_ != FLS_OUT_OF_INDEXES) {
      ::FlsFree(slot_);
    }
    __gnu_cxx::__freeres();
  }

  // Ends the process if the system has no slot or no memory: the runtime does so too, because it
  // cannot throw then.
  __cxa_eh_globals* OfThisThread() const noexcept {
    void* state = ::FlsGetValue(slot_);
    if (state == nullptr) {
      state = ::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(__cxa_eh_globals));
      if (state == nullptr || ::FlsSetValue(slot_, state) == 0) {
        __builtin_trap();
      }
    }
    return static_cast<__cxa_eh_globals*>(state);
  }

 private:
  DWORD slot_;
};

const ThreadStates threadStates;

}  // namespace

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return threadStates.OfThisThread(); }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
  return threadStates.OfThisThread();
}

}  // namespace __cxxabiv1

// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
