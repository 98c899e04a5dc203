#include "text/posix_path.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Localize {
namespace {

TEST(PosixPath, TurnsBackslashesIntoSlashesAndCharactersIntoUtf8) {
  const struct {
    const char* name;
    std::wstring path;
    std::string bytes;
  } rows[] = {
      {"empty", L"", ""},
      {"every backslash", L"lang\\\\de.txt\\", "lang//de.txt/"},
      {"slashes stay", L"lang/de.txt", "lang/de.txt"},
      {"a drive stays", L"C:\\phyval.txt", "C:/phyval.txt"},
      {"last with one byte", L"\u007F", "\x7F"},
      {"first with two bytes", {L'\x80'}, "\xC2\x80"},
      {"Cyrillic", L"язык", "\xD1\x8F\xD0\xB7\xD1\x8B\xD0\xBA"},
      {"last with two bytes", L"\u07FF", "\xDF\xBF"},
      {"first with three bytes", L"\u0800", "\xE0\xA0\x80"},
      {"before the surrogates", {L'\xD7FF'}, "\xED\x9F\xBF"},
      {"after the surrogates", {L'\xE000'}, "\xEE\x80\x80"},
      {"last with three bytes", {L'\xFFFF'}, "\xEF\xBF\xBF"},
      {"first with four bytes", L"\U00010000", "\xF0\x90\x80\x80"},
      {"last character", {L'\x10FFFF'}, "\xF4\x8F\xBF\xBF"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(PosixPath(row.path), row.bytes);
  }
}

TEST(PosixPath, GivesNothingForInvalidCharacters) {
  for (const wchar_t invalid :
       {L'\xD800', L'\xDBFF', L'\xDC00', L'\xDFFF', L'\x110000', L'\x7FFFFFFF',
        static_cast<wchar_t>(0x80000000U), static_cast<wchar_t>(0xFFFFFFFFU)}) {
    SCOPED_TRACE(static_cast<unsigned>(invalid));
    EXPECT_EQ(PosixPath(std::wstring{L'a', invalid, L'b'}), std::nullopt);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
