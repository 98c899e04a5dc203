// Faulty files and names, through the exports of the built library. Cases that only one system has
// are in file_faults_posix_test.cpp and file_faults_windows_test.cpp.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/host_test.h"
#include "tests/support/invalid_utf8.h"

namespace {

class FileFaults : public HostTest {};

// ---- Bytes that are not UTF-8

// The entry that remains of a line in which invalid bytes follow `front`.
struct CutLine {
  const char* front;
  const wchar_t* key;  // null: no entry remains
  const wchar_t* text;
};

TEST_F(FileFaults, AnInvalidSequenceInAnEntryCutsItsLineAndTheRestOfTheFile) {
  const std::string line = "k\xC3\xA4y  a \xE2\x82\xAC\t\xF0\x9F\x98\x80";
  const CutLine cuts[] = {
      {"", nullptr, nullptr},
      {"k", L"k", L""},
      {"k\xC3\xA4", L"k\u00E4", L""},
      {"k\xC3\xA4y", L"k\u00E4y", L""},
      {"k\xC3\xA4y ", L"k\u00E4y", L""},
      {"k\xC3\xA4y  ", L"k\u00E4y", L" "},  // a text of only blanks is kept
      {"k\xC3\xA4y  a", L"k\u00E4y", L"a"},
      {"k\xC3\xA4y  a ", L"k\u00E4y", L"a"},
      {"k\xC3\xA4y  a \xE2\x82\xAC", L"k\u00E4y", L"a \u20AC"},
      {"k\xC3\xA4y  a \xE2\x82\xAC\t", L"k\u00E4y", L"a \u20AC"},
      {"k\xC3\xA4y  a \xE2\x82\xAC\t\xF0\x9F\x98\x80", L"k\u00E4y", L"a \u20AC\t\U0001F600"},
  };
  int files = 0;
  for (const InvalidUtf8& fault : kInvalidUtf8) {
    for (const CutLine& cut : cuts) {
      SCOPED_TRACE(testing::Message()
                   << fault.name << " behind " << testing::PrintToString(cut.front));
      const std::string front = cut.front;
      ASSERT_EQ(line.compare(0, front.size(), front), 0);
      const std::string id = "id" + std::to_string(++files);
      EXPECT_EQ(
          WriteAndLoad(L"file.txt", id + "\nbefore text\n" + front + std::string(fault.bytes) +
                                        line.substr(front.size()) + "\nafter text\n"),
          0);
      EXPECT_EQ(Text(L"before"), L"text");
      if (cut.key != nullptr) {
        EXPECT_EQ(Text(cut.key), cut.text);
      }
      EXPECT_EQ(host_.GetErrorsCount(), 0);
      for (const wchar_t* const key : {L"k", L"k\u00E4", L"k\u00E4y", L"after", L""}) {
        if (cut.key == nullptr || std::wstring(key) != cut.key) {
          ExpectMissing(key);
        }
      }
    }
  }
}

TEST(HeaderFaults, AnInvalidSequenceInTheHeaderCutsTheId) {
  const ScratchFolder folder;
  const std::string line = "d\xC3\xA4 Deutsch";
  const CutLine cuts[] = {
      {"d", L"d", nullptr},
      {"d\xC3\xA4", L"d\u00E4", nullptr},
      {"d\xC3\xA4 ", L"d\u00E4", nullptr},
      {"d\xC3\xA4 Deut", L"d\u00E4", nullptr},
      {"d\xC3\xA4 Deutsch", L"d\u00E4", nullptr},
  };
  for (const InvalidUtf8& fault : kInvalidUtf8) {
    for (const CutLine& cut : cuts) {
      SCOPED_TRACE(testing::Message()
                   << fault.name << " behind " << testing::PrintToString(cut.front));
      const LoadedLibrary library;  // a new one for each row, without a current dictionary
      const LibraryExports host = ExportsOf(library);
      const std::string front = cut.front;
      folder.Write(L"file.txt",
                   front + std::string(fault.bytes) + line.substr(front.size()) + "\nkey text\n");
      EXPECT_EQ(host.LoadDictionary(folder.HostPath().c_str(), L"file.txt"), 0);
      EXPECT_STREQ(host.LANG(L"key"), L"");
      EXPECT_EQ(::ReadMessages(host),
                (Messages{L"EL121. Key not found in dictionary\nKey: key\nDictionary id: key"}));
      EXPECT_EQ(host.UseLanguage(cut.key), 0);
    }
  }
}

TEST_F(FileFaults, AnInvalidSequenceAtTheStartChangesNothing) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  for (const InvalidUtf8& fault : kInvalidUtf8) {
    SCOPED_TRACE(fault.name);
    EXPECT_EQ(WriteAndLoad(L"file.txt", std::string(fault.bytes) + "de\nkey Wort\n"), 0);
    EXPECT_EQ(Text(L"key"), L"text");
    EXPECT_EQ(host_.UseLanguage(L""), -1);
    host_.ClearErrors();
  }
}

// ---- Lines of 10 MB

constexpr std::size_t kTenMegabytes = 10'000'000;

TEST_F(FileFaults, AnIdOfTenMegabytesLoads) {
  const std::wstring id(kTenMegabytes, L'd');
  EXPECT_EQ(WriteAndLoad(L"file.txt", std::string(kTenMegabytes, 'd') + " word\nkey text\n"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.UseLanguage(id.c_str()), 0);
  EXPECT_EQ(host_.UseLanguage((id + L"d").c_str()), -1);
  ASSERT_EQ(host_.GetErrorsCount(), 1);
  EXPECT_TRUE(host_.GetError(0) == L"EL112. Dictionary not found\nDictionary id: d" + id);
}

TEST_F(FileFaults, AKeyOfTenMegabytesLoads) {
  const std::wstring key(kTenMegabytes, L'k');
  const std::string line = std::string(kTenMegabytes, 'k') + " text\n";
  EXPECT_EQ(WriteAndLoad(L"file.txt", "en\n" + line + line + "last text\n"), 1);
  EXPECT_TRUE(host_.GetError(0) == L"EL101. Key already declared.\nKey: " + key +
                                       L"\nDictionary: " + PathOf(L"file.txt"));
  EXPECT_EQ(Text(key), L"text");
  EXPECT_EQ(Text(L"last"), L"text");
  EXPECT_EQ(Text(key + L"k"), L"");
  ASSERT_EQ(host_.GetErrorsCount(), 2);
  EXPECT_TRUE(host_.GetError(1) ==
              L"EL121. Key not found in dictionary\nKey: k" + key + L"\nDictionary id: k" + key);
}

TEST_F(FileFaults, TextsOfTenMegabytesLoad) {
  std::string twoBytes;
  std::wstring letters;
  for (std::size_t i = 0; i < kTenMegabytes / 2; ++i) {
    twoBytes += "\xC3\xA4";
    letters += L'\u00E4';
  }
  EXPECT_EQ(WriteAndLoad(L"file.txt", "en\nascii " + std::string(kTenMegabytes, 't') +
                                          "\r\n"
                                          "wide " +
                                          twoBytes + "\r\nblanks " +
                                          std::string(kTenMegabytes, ' ') + "\r\nlast text"),
            0);
  EXPECT_TRUE(Text(L"ascii") == std::wstring(kTenMegabytes, L't'));
  EXPECT_TRUE(Text(L"wide") == letters);
  EXPECT_TRUE(Text(L"blanks") == std::wstring(kTenMegabytes, L' '));
  EXPECT_EQ(Text(L"last"), L"text");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

TEST_F(FileFaults, TenMegabytesBeforeAnInvalidByteLoad) {
  EXPECT_EQ(
      WriteAndLoad(L"file.txt", "en\nkey " + std::string(kTenMegabytes, 't') + "\xFF\nlast text\n"),
      0);
  EXPECT_TRUE(Text(L"key") == std::wstring(kTenMegabytes, L't'));
  ExpectMissing(L"last");
}

TEST_F(FileFaults, TenMegabytesOfLineEndsLoad) {
  EXPECT_EQ(WriteAndLoad(L"file.txt", "en\n" + std::string(kTenMegabytes, '\n') + "key text\n"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
}

// ---- Permissions

TEST_F(FileFaults, AReadOnlyFileLoads) {
  folder_.Write(L"en.txt", "en\nkey text\n");
  const std::filesystem::path file = folder_.Path() / "en.txt";
  constexpr auto kAllMayRead = std::filesystem::perms{0444};
  std::filesystem::permissions(file, kAllMayRead);
  EXPECT_EQ(Load(L"en.txt"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);  // for deleting on Windows
}

// ---- Names

TEST_F(FileFaults, NamesOfThirtyTwoThousandCharactersAreNotFound) {
  const std::wstring longName(32000, L'n');
  std::wstring manyFolders = folder_.HostPath();
  while (manyFolders.size() < 32000) {
    manyFolders += L"\\folder";
  }
  ExpectNotFound(folder_.HostPath(), longName);
  ExpectNotFound(longName, L"en.txt");
  ExpectNotFound(longName, longName);
  ExpectNotFound(manyFolders, L"en.txt");
  ExpectNotFound(std::wstring(32000, L'\u044F'), L"en.txt");
  ExpectNotFound(std::wstring(32000, L'\\'), L"no such file.txt");
}

TEST_F(FileFaults, NamesWithLoneSurrogatesAreNotFound) {
  folder_.Write(L"_", "en\n");  // possible results of a lossy conversion
  folder_.Write(L"\uFFFD", "en\n");
  const std::wstring folder = folder_.HostPath();
  for (const wchar_t surrogate :
       {wchar_t{0xD800}, wchar_t{0xDBFF}, wchar_t{0xDC00}, wchar_t{0xDFFF}}) {
    SCOPED_TRACE(static_cast<unsigned>(surrogate));
    ExpectNotFound(folder, {surrogate});
    ExpectNotFound(folder, std::wstring(L"file") + surrogate + L".txt");
    ExpectNotFound(folder + L"\\" + surrogate, L"en.txt");
  }
  ExpectNotFound(folder, {wchar_t{0xDE00}, wchar_t{0xD83D}});  // a pair in the wrong order
}

TEST_F(FileFaults, NamesThatAreNoFilesAreNotFound) {
  folder_.Write(L"folder\\en.txt", "en\n");
  for (const wchar_t* const fileName :
       {L"", L".", L"..", L"folder", L"folder\\", L"folder\\..", L"folder\\en.txt\\",
        L"folder\\en.txt\\x", L"\\", L"NUL", L"a|b?c*d<e>.txt", L"en.txt\n", L" "}) {
    SCOPED_TRACE(testing::PrintToString(fileName));
    ExpectNotFound(folder_.HostPath(), fileName);
  }
}

}  // namespace
