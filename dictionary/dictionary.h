// What is loaded: dictionaries by id, texts by key.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "frame/utf8.h"

namespace KelmoLibs::Localize {

/// A key as a file holds it: well-formed UTF-8.
struct Utf8Key {
  std::string_view bytes;
};

/// Orders keys by their code units, one that is still UTF-8 as if it were decoded: to find its place
/// (lower_bound) takes no wide copy.
struct KeyOrder {
  using is_transparent = void;

  bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
    return left < right;
  }
  bool operator()(std::wstring_view left, Utf8Key right) const noexcept {
    return CompareWithUtf8(left, right.bytes) < 0;
  }
};

/// Texts by key. An entry is never changed, moved or removed: hosts hold pointers to its text.
using Dictionary = std::map<std::wstring, std::wstring, KeyOrder>;

/// Dictionaries by id. None is ever removed.
using DictionaryTable = std::map<std::wstring, Dictionary, std::less<>>;

}  // namespace KelmoLibs::Localize
