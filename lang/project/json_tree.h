// JSON that knows the place of each value, for files that people write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KelmoLibs::Lang {

struct JsonValue {
  enum class Kind : std::uint8_t { kNull, kBoolean, kNumber, kString, kArray, kObject };

  Kind kind = Kind::kNull;
  std::size_t begin = 0;  // offset of its first byte
  std::size_t end = 0;    // offset behind its last byte
  std::string text;       // of a string
  double number = 0;
  std::vector<JsonValue> items;  // of an array, or the values of an object
  std::vector<JsonValue> names;  // of an object: strings, one for each value
};

struct JsonResult {
  std::optional<JsonValue> value;
  std::size_t faultAt = 0;  // if there is no value: the offset where the text is no JSON
};

/// Reads UTF-8. Values that are nested more than 16 deep are a fault.
JsonResult ReadJson(std::string_view bytes);

}  // namespace KelmoLibs::Lang
