#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/read_all.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"
#include "text/file_path.h"
#include "text/line_reader.h"

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
      {"two CR before an LF", "a\r\r\nb", "a\r\nb"},
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

TEST(OpenTextFile, ReadsLargeChunks) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", std::string(100'000, 'a'));
  const auto file = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
  ASSERT_NE(file, nullptr);
  std::string buffer(65536, '#');
  EXPECT_GE(file->Read(buffer.data(), buffer.size()), 4096U);
}

TEST(OpenTextFile, HintsAtTheSizeOfTheFile) {
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

TEST(OpenTextFile, OpensOnlyFiles) {
  const ScratchFolder folder;
  folder.Write(L"folder\\file.txt", "text");
  const struct {
    const char* name;
    std::wstring path;
  } rows[] = {
      {"no such file", JoinPath(folder.HostPath(), L"missing.txt")},
      {"no such folder", JoinPath(folder.HostPath(), L"missing\\file.txt")},
      {"a folder", JoinPath(folder.HostPath(), L"folder")},
      {"a folder, with a separator after it", JoinPath(folder.HostPath(), L"folder\\")},
      {"a file as a folder", JoinPath(folder.HostPath(), L"folder\\file.txt\\x")},
      {"the empty path", L""},
      {"a device of Windows, missing on Linux", JoinPath(folder.HostPath(), L"NUL")},
      {"a name that is too long for every system",
       JoinPath(folder.HostPath(), std::wstring(32000, L'x'))},
      {"characters that Windows forbids, missing on Linux",
       JoinPath(folder.HostPath(), L"a|b?c*d<e>.txt")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(OpenTextFile(row.path), nullptr);
  }
}

TEST(OpenTextFile, SharesTheFileWithWriters) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "first line\n");
  const std::wstring path = JoinPath(folder.HostPath(), L"file.txt");
  {
    const std::ofstream writer(folder.Path() / "file.txt", std::ios::app);
    ASSERT_TRUE(writer.is_open());
    EXPECT_EQ(ReadTextFile(path, 100), "first line\n") << "a writer has opened it before";
  }
  const auto reader = OpenTextFile(path);
  ASSERT_NE(reader, nullptr);
  std::ofstream writer(folder.Path() / "file.txt", std::ios::app);
  writer << "second line\n";
  writer.close();
  EXPECT_TRUE(writer) << "the library has opened it before";
  EXPECT_EQ(ReadTextFile(path, 100), "first line\nsecond line\n");
}

TEST(OpenTextFile, ClosesTheFile) {
  // On Windows an open file cannot be removed; files_posix_test.cpp counts descriptors.
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  EXPECT_EQ(ReadTextFile(JoinPath(folder.HostPath(), L"file.txt"), 100), "text");
  EXPECT_TRUE(std::filesystem::remove(folder.Path() / "file.txt"));
}

// ---- Files that change while they are read

// Counts the bytes that a reader has read: how far it reads ahead is unspecified.
class CountingSource final : public ByteSource {
 public:
  explicit CountingSource(std::unique_ptr<ByteSource> file) : file_(std::move(file)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t count = file_->Read(buffer, size);
    bytesRead_ += count;
    return count;
  }
  std::size_t SizeHint() const noexcept override { return file_->SizeHint(); }

  std::size_t BytesRead() const noexcept { return bytesRead_; }

 private:
  std::unique_ptr<ByteSource> file_;
  std::size_t bytesRead_ = 0;
};

using Lines = std::vector<std::string>;

std::string NumberedLines(const std::string& word, std::size_t size) {
  std::string bytes;
  for (int number = 10000; bytes.size() < size; ++number) {
    bytes += word + std::to_string(number) + " \xC3\xA4\n";
  }
  return bytes;
}

Lines LinesOf(const std::string& bytes) {
  std::istringstream stream(bytes);
  Lines lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

TEST(OpenTextFile, EachReadSeesTheFileAsItIsThen) {
  namespace fs = std::filesystem;
  const ScratchFolder folder;
  const fs::path file = folder.Path() / "file.txt";
  // A file that is read whole before its first line, and a file of several chunks.
  for (const std::size_t size : {std::size_t{1000}, std::size_t{300'000}}) {
    const std::string bytes = NumberedLines("line ", size);
    const std::string other = NumberedLines("others ", size + 5000);
    const std::size_t inLine = bytes.rfind("line", size * 9 / 10) + 2;
    const auto after = [](const std::string& text, std::size_t bytesRead) {
      return text.substr(std::min(bytesRead, text.size()));
    };
    const auto truncatedTo = [&](std::size_t rest) {
      return [&bytes, rest](std::size_t bytesRead) {
        return bytes.substr(0, std::max(bytesRead, rest));
      };
    };
    const struct {
      const char* name;
      std::function<void()> change;
      std::function<std::string(std::size_t bytesRead)> expected;
    } rows[] = {
        {"unchanged", [] {}, truncatedTo(bytes.size())},
        {"truncated to nothing", [&] { fs::resize_file(file, 0); }, truncatedTo(0)},
        {"truncated in a line", [&] { fs::resize_file(file, inLine); }, truncatedTo(inLine)},
        {"truncated in a character",
         [&] { fs::resize_file(file, bytes.rfind("\xC3\xA4", inLine) + 1); },
         truncatedTo(bytes.rfind("\xC3\xA4", inLine))},
        {"overwritten in place",
         [&] {
           std::fstream(file, std::ios::binary | std::ios::in | std::ios::out)
               << other.substr(0, bytes.size());
         },
         [&](std::size_t bytesRead) {
           return bytes.substr(0, bytesRead) + after(other.substr(0, bytes.size()), bytesRead);
         }},
        {"rewritten with less",
         [&] { std::ofstream(file, std::ios::binary) << other.substr(0, size / 2); },
         [&](std::size_t bytesRead) {
           return bytes.substr(0, bytesRead) + after(other.substr(0, size / 2), bytesRead);
         }},
        {"rewritten with more", [&] { std::ofstream(file, std::ios::binary) << other; },
         [&](std::size_t bytesRead) {
           return bytes.substr(0, bytesRead) + after(other, bytesRead);
         }},
        {"appended to",
         [&] { std::ofstream(file, std::ios::binary | std::ios::app) << "added\nlast"; },
         [&](std::size_t /*bytesRead*/) { return bytes + "added\nlast"; }},
    };
    for (const auto& row : rows) {
      SCOPED_TRACE(testing::Message() << row.name << ", " << size << " bytes");
      folder.Write(L"file.txt", bytes);
      auto opened = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
      ASSERT_NE(opened, nullptr);
      CountingSource source(std::move(opened));
      LineReader reader(source);
      Lines lines;
      const auto nextLine = [&] {
        const auto line = reader.Next();
        if (line) {
          lines.emplace_back(*line);
        }
        return line.has_value();
      };
      for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(nextLine());
      }
      const std::size_t bytesRead = source.BytesRead();
      ASSERT_TRUE(bytesRead < inLine || size < 2000) << "all bytes were read before the change";
      // Otherwise halves of two characters would meet, and would end the text.
      ASSERT_NE(bytes[bytesRead - 1], '\xC3');
      ASSERT_TRUE(bytesRead >= other.size() || other[bytesRead] != '\xA4');
      row.change();
      while (nextLine()) {
      }
      EXPECT_EQ(lines, LinesOf(row.expected(bytesRead)));
    }
  }
}

// ---- Writing a file

TEST(WriteWholeFile, ReplacesTheContentsOfTheFile) {
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

TEST(WriteWholeFile, IgnoresAFileThatCannotBeOpened) {
  const ScratchFolder folder;
  folder.Write(L"folder\\file.txt", "text");
  for (const wchar_t* const name : {L"", L"folder", L"missing\\file.txt", L"folder\\file.txt\\x"}) {
    WriteWholeFile(JoinPath(folder.HostPath(), name), "bytes");
  }
  WriteWholeFile(L"", "bytes");
  EXPECT_EQ(ReadFile(folder.Path() / "folder/file.txt"), "text");
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

TEST(WriteWholeFile, ClosesTheFile) {
  const ScratchFolder folder;
  WriteWholeFile(JoinPath(folder.HostPath(), L"file.txt"), "bytes");
  EXPECT_TRUE(std::filesystem::remove(folder.Path() / "file.txt"));
}

}  // namespace
}  // namespace KelmoLibs::Localize
