// The fixture of tests of the built library: loads the library for each test, calls only its
// exports, and has a folder for files.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/library_exports.h"
#include "tests/support/loaded_library.h"
#include "tests/support/scratch_folder.h"

using Messages = std::vector<std::wstring>;

/// `host` has the functions under their names.
template <class Functions>
Messages ReadMessages(const Functions& host) {
  Messages messages;
  for (std::int32_t i = 0; i < host.GetErrorsCount(); ++i) {
    messages.emplace_back(host.GetError(i));
  }
  return messages;
}

class HostTest : public testing::Test {
 protected:
  std::int32_t Load(const std::wstring& fileName) const {
    return host_.LoadDictionary(folder_.HostPath().c_str(), fileName.c_str());
  }
  std::int32_t WriteAndLoad(const std::wstring& fileName, const std::string& bytes) const {
    folder_.Write(fileName, bytes);
    return Load(fileName);
  }
  std::int32_t Init(const std::wstring& folder, const std::wstring& language) {
    ++starts_;
    return host_.Init(folder.c_str(), language.c_str());
  }
  std::int32_t Init0(const std::wstring& folder) {
    ++starts_;
    return host_.Init0(folder.c_str());
  }
  std::int32_t ExportPhyVal() {
    ++starts_;
    return host_.ExportPhyVal();
  }
  void TearDown() override { library_.ReleaseReferencesOfStarts(starts_); }

  std::wstring PathOf(const std::wstring& fileName) const {
    return folder_.HostPath() + L'\\' + fileName;
  }
  std::wstring Text(const std::wstring& key) const { return host_.LANG(key.c_str()); }

  Messages ReadMessages() const { return ::ReadMessages(host_); }

  // LANG(key) finds nothing and lists one message.
  void ExpectMissing(const std::wstring& key) const {
    host_.ClearErrors();
    EXPECT_EQ(Text(key), L"");
    EXPECT_EQ(ReadMessages(), (Messages{L"EL121. Key not found in dictionary\nKey: " + key +
                                        L"\nDictionary id: " + key}));
    host_.ClearErrors();
  }

  // LoadDictionary(folder, fileName) finds no file and lists one message.
  void ExpectNotFound(const std::wstring& folder, const std::wstring& fileName) const {
    host_.ClearErrors();
    EXPECT_EQ(host_.LoadDictionary(folder.c_str(), fileName.c_str()), -2);
    EXPECT_EQ(ReadMessages(), (Messages{L"EL111. Dictionary file not found\nDictionary: " + folder +
                                        L"\\" + fileName}));
    host_.ClearErrors();
  }

  const ScratchFolder folder_;
  const LoadedLibrary library_;
  const LibraryExports host_ = ExportsOf(library_);

 private:
  int starts_ = 0;
};
