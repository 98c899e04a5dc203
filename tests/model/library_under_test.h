// One lifetime of the real library, from load to unload. The tests that use it are built twice:
// with the built library, loaded at run time (built_library.cpp), and with the library's objects
// linked into the test (library_objects.cpp). The latter also show the state that no export shows.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/class_members.h"
#include "tests/support/library_exports.h"
#include "tests/support/loaded_library.h"
#include "tests/support/unit_rows.h"

class LibraryUnderTest {
 public:
  LibraryUnderTest();
  LibraryUnderTest(const LibraryUnderTest&) = delete;
  LibraryUnderTest& operator=(const LibraryUnderTest&) = delete;
  ~LibraryUnderTest();

  const LibraryExports& Exports() const { return exports_; }
  const ClassMembers& Members() const { return members_; }

  /// Must be called with each start (Init, Init0, ExportPhyVal): on Windows each start takes a
  /// reference to the library, which the destructor releases.
  void CountStart() { ++starts_; }

  struct Inside {
    UnitRows catalogue;
    std::map<std::wstring, std::map<std::int32_t, std::pair<std::wstring, std::wstring>>> units;
    std::vector<std::wstring> loadMessages;
    std::wstring currentLanguage;
  };
  /// Empty for the built library.
  std::optional<Inside> LookInside() const;

 private:
  std::optional<LoadedLibrary> library_;
  LibraryExports exports_;
  ClassMembers members_;
  int starts_ = 0;
};
