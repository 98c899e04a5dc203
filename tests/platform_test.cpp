#include "frame/platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <string>

#include "frame/file_path.h"
#include "tests/support/read_all.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"

namespace KelmoLibs::Localize {
namespace {

std::optional<std::string> ReadTextFile(const std::wstring& path, std::size_t bufferBytes) {
  const std::unique_ptr<ByteSource> file = OpenTextFile(path);
  if (!file) {
    return std::nullopt;
  }
  return ReadAll(*file, bufferBytes);
}

TEST(OpenTextFile, ReadsInTextMode) {
  const ScratchFolder folder;
  const struct {
    const char* name;
    std::string bytes;
    std::string text;
  } rows[] = {
      {"nothing", "", ""},
      {"LF", "a\nb\n", "a\nb\n"},
      {"CR LF", "a\r\nb\r\n", "a\nb\n"},
      {"a lone CR", "a\rb\r", "a\rb\r"},
      {"two CR in front of an LF", "a\r\r\nb", "a\r\nb"},
      {"0x1A",
       "a\x1A"
       "b",
       textModeEndsAtControlZ ? "a"
                              : "a\x1A"
                                "b"},
      {"bytes that are not UTF-8", "\xFF\x80", "\xFF\x80"},
  };
  for (const auto& row : rows) {
    folder.Write(L"file.txt", row.bytes);
    for (const std::size_t buffer : std::initializer_list<std::size_t>{1, 2, 3, 4, 100}) {
      SCOPED_TRACE(testing::Message() << row.name << ", buffer of " << buffer);
      EXPECT_EQ(ReadTextFile(JoinPath(folder.HostPath(), L"file.txt"), buffer), row.text);
    }
  }
}

TEST(OpenTextFile, ReadsInLargePieces) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", std::string(100'000, 'a'));
  const auto file = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
  ASSERT_NE(file, nullptr);
  std::string buffer(65536, '#');
  EXPECT_GE(file->Read(buffer.data(), buffer.size()), 4096U);
}

TEST(OpenTextFile, TellsTheFilesSize) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", std::string(12345, 'a'));
  const auto file = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->SizeHint(), 12345U);
}

TEST(OpenTextFile, OpensNamesInEveryScriptAndWithBlanks) {
  const ScratchFolder folder;
  for (const wchar_t* const name :
       {L"de.txt", L"with blanks .txt", L"словарь.txt", L"W\u00F6rterbuch.txt", L"\u8F9E\u66F8.txt",
        L"\U0001F600.txt", L"вложенная папка\\тексты и слова.txt"}) {
    SCOPED_TRACE(testing::PrintToString(name));
    folder.Write(name, "text");
    EXPECT_EQ(ReadTextFile(JoinPath(folder.HostPath(), name), 100), "text");
  }
}

TEST(OpenTextFile, OpensNothingButFiles) {
  const ScratchFolder folder;
  folder.Write(L"folder\\file.txt", "text");
  const struct {
    const char* name;
    std::wstring path;
  } rows[] = {
      {"no such file", JoinPath(folder.HostPath(), L"missing.txt")},
      {"no such folder", JoinPath(folder.HostPath(), L"missing\\file.txt")},
      {"a folder", JoinPath(folder.HostPath(), L"folder")},
      {"a folder, with a separator behind it", JoinPath(folder.HostPath(), L"folder\\")},
      {"a file taken for a folder", JoinPath(folder.HostPath(), L"folder\\file.txt\\x")},
      {"the empty path", L""},
      {"a device of Windows, and not there on Linux", JoinPath(folder.HostPath(), L"NUL")},
      {"a name that no system takes", JoinPath(folder.HostPath(), std::wstring(32000, L'x'))},
      {"characters that Windows forbids, and not there on Linux",
       JoinPath(folder.HostPath(), L"a|b?c*d<e>.txt")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(OpenTextFile(row.path), nullptr);
  }
}

TEST(OpenTextFile, SharesTheFileWithThoseWhoWriteIt) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "first line\n");
  const std::wstring path = JoinPath(folder.HostPath(), L"file.txt");
  {
    const std::ofstream writer(folder.Path() / "file.txt", std::ios::app);
    ASSERT_TRUE(writer.is_open());
    EXPECT_EQ(ReadTextFile(path, 100), "first line\n") << "written by another already";
  }
  const auto reader = OpenTextFile(path);
  ASSERT_NE(reader, nullptr);
  std::ofstream writer(folder.Path() / "file.txt", std::ios::app);
  writer << "second line\n";
  writer.close();
  EXPECT_TRUE(writer) << "opened by the library already";
  EXPECT_EQ(ReadTextFile(path, 100), "first line\nsecond line\n");
}

TEST(OpenTextFile, LetsTheFileGoAtTheEnd) {
  // On Windows an open file cannot be removed; platform_posix_test.cpp counts descriptors.
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  EXPECT_EQ(ReadTextFile(JoinPath(folder.HostPath(), L"file.txt"), 100), "text");
  EXPECT_TRUE(std::filesystem::remove(folder.Path() / "file.txt"));
}

// ---- Writing a file

TEST(WriteWholeFile, MakesTheFileHoldTheseBytesAndNothingElse) {
  using namespace std::string_literals;
  const ScratchFolder folder;
  const std::wstring path = JoinPath(folder.HostPath(), L"таблица с пробелами.txt");
  for (const std::string& bytes :
       {"first, and the longest"s, "a\nb\r\n\r\x1A\0c\xFF"s, ""s, std::string(300'000, 'x')}) {
    SCOPED_TRACE(testing::PrintToString(bytes.substr(0, 30)));
    WriteWholeFile(path, bytes);
    EXPECT_TRUE(ReadFile(folder.Path() / std::filesystem::u8path("таблица с пробелами.txt")) ==
                bytes);
  }
}

TEST(WriteWholeFile, SaysNothingOfWhatCannotBeOpened) {
  const ScratchFolder folder;
  folder.Write(L"folder\\file.txt", "text");
  for (const wchar_t* const name : {L"", L"folder", L"missing\\file.txt", L"folder\\file.txt\\x"}) {
    WriteWholeFile(JoinPath(folder.HostPath(), name), "bytes");
  }
  WriteWholeFile(L"", "bytes");
  EXPECT_EQ(ReadFile(folder.Path() / "folder/file.txt"), "text");
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

TEST(WriteWholeFile, LetsTheFileGo) {
  const ScratchFolder folder;
  WriteWholeFile(JoinPath(folder.HostPath(), L"file.txt"), "bytes");
  EXPECT_TRUE(std::filesystem::remove(folder.Path() / "file.txt"));
}

// ---- What characters are; character_classes_posix_test.cpp has more of them

TEST(CharacterClass, OfWhatTablesHold) {
  const struct {
    const char* name;
    wchar_t character;
    bool graphic;
    bool blank;
  } rows[] = {
      {"NUL", L'\0', false, false},
      {"tab", L'\t', false, true},
      {"LF", L'\n', false, false},
      {"CR", L'\r', false, false},
      {"0x1F", L'\x1F', false, false},
      {"space", L' ', false, true},
      {"!", L'!', true, false},
      {"~", L'~', true, false},
      {"DEL", L'\x7F', false, false},
      {"a control character of Latin-1", L'\x85', false, false},
      {"degree sign", L'\u00B0', true, false},
      {"Cyrillic em", L'\u043C', true, false},
      {"Hebrew alef", L'\u05D0', true, false},
      {"Chinese", L'\u4E2D', true, false},
      {"half a surrogate pair", wchar_t{0xD83D}, false, false},
      {"the other half", wchar_t{0xDE00}, false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsGraphic(row.character), row.graphic);
    EXPECT_EQ(IsBlank(row.character), row.blank);
  }
}

TEST(CharacterClass, KeepsAByteOrderMark) {
  EXPECT_TRUE(IsGraphic(L'\uFEFF') || IsBlank(L'\uFEFF')) << "graphic on Linux, blank on Windows";
}

}  // namespace
}  // namespace KelmoLibs::Localize
