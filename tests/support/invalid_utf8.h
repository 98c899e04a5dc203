// All kinds of invalid UTF-8. Each is invalid from its first byte, independent of the characters
// before and after it.
#pragma once

#include <string_view>

struct InvalidUtf8 {
  const char* name;
  std::string_view bytes;
};

inline constexpr InvalidUtf8 kInvalidUtf8[] = {
    // Truncated
    {"two bytes without the second", "\xC3"},
    {"three bytes without the third", "\xE2\x82"},
    {"three bytes without the second", "\xE2"},
    {"four bytes without the fourth", "\xF0\x9F\x98"},
    {"four bytes without the third", "\xF0\x9F"},
    {"four bytes without the second", "\xF0"},
    {"a letter in place of the second", "\xC3z"},
    {"a letter in place of the third", "\xE2\x82z"},
    {"a letter in place of the fourth", "\xF0\x9F\x98z"},
    {"a lead in place of the second", "\xC3\xC3\xA4"},
    {"a lead in place of the third", "\xE2\x82\xC3\xA4"},
    {"a lead in place of the fourth", "\xF0\x9F\x98\xC3\xA4"},

    // Overlong
    {"NUL in two bytes", "\xC0\x80"},
    {"slash in two bytes", "\xC0\xAF"},
    {"delete in two bytes", "\xC1\xBF"},
    {"NUL in three bytes", "\xE0\x80\x80"},
    {"U+07FF in three bytes", "\xE0\x9F\xBF"},
    {"NUL in four bytes", "\xF0\x80\x80\x80"},
    {"U+FFFF in four bytes", "\xF0\x8F\xBF\xBF"},

    // Surrogates
    {"first high surrogate", "\xED\xA0\x80"},
    {"last high surrogate", "\xED\xAF\xBF"},
    {"first low surrogate", "\xED\xB0\x80"},
    {"last low surrogate", "\xED\xBF\xBF"},
    {"an encoded surrogate pair", "\xED\xA0\xBD\xED\xB8\x80"},

    // Beyond U+10FFFF
    {"U+110000", "\xF4\x90\x80\x80"},
    {"lead F5", "\xF5\x80\x80\x80"},
    {"lead F7", "\xF7\xBF\xBF\xBF"},
    {"lead F8, five bytes", "\xF8\x88\x80\x80\x80"},
    {"lead FC, six bytes", "\xFC\x84\x80\x80\x80\x80"},
    {"FE", "\xFE"},
    {"FF", "\xFF"},

    // Continuation bytes without a lead
    {"80", "\x80"},
    {"BF", "\xBF"},
    {"two of them", "\xA4\xA4"},
};
