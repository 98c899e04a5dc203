// Loads the built library in a test program that is not linked to it.
#pragma once

/// Loads the library, and unloads it in the destructor.
class LoadedLibrary {
 public:
  /// Throws std::runtime_error if the library cannot be loaded.
  LoadedLibrary();
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
  ~LoadedLibrary();

  /// On Windows each start (Init, Init0, ExportPhyVal) adds a reference to the library. Call this
  /// with the number of starts before the destructor, or the library stays loaded. Does nothing on
  /// Linux.
  void ReleaseReferencesOfStarts(int starts) const;

  /// Whether the library is loaded in this process.
  static bool IsInProcess() noexcept;

  template <class Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(Address(name));
  }

 private:
  using AnyFunction = void();
  AnyFunction* Address(const char* name) const;  // throws std::runtime_error if there is none

  void* handle_;
};
