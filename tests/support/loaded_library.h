// The built library in a test program that is not linked to it.
#pragma once

/// Loaded at run time and unloaded at the end of the object's life.
class LoadedLibrary {
 public:
  /// Throws std::runtime_error where it cannot be loaded.
  LoadedLibrary();
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
  ~LoadedLibrary();

  /// Each start (Init, Init0, ExportPhyVal) takes a reference to the library on Windows, and none on
  /// Linux. To be called before the end, with how many there were, or the library stays.
  void GiveBackReferencesOf(int starts) const;

  /// Whether the process holds the library, loaded by whomever.
  static bool IsInProcess() noexcept;

  template <class Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(Address(name));
  }

 private:
  using AnyFunction = void();
  AnyFunction* Address(const char* name) const;  // throws std::runtime_error where there is none

  void* handle_;
};
