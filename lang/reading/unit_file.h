// A unit table: a file of a language, or the default table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lang/reading/source_file.h"

namespace KelmoLibs::Lang {

/// A line of a language unit table, as the library reads it. The texts are UTF-8.
struct UnitLine {
  std::uint32_t line = 0;
  std::int32_t code = 0;
  std::string codeField;
  std::string symbol;
  std::string name;
};

class UnitFile {
 public:
  UnitFile(std::string name, std::filesystem::path path, std::string raw)
      : source_(std::move(name), std::move(path), std::move(raw)) {}

  const SourceFile& Source() const noexcept { return source_; }

 private:
  SourceFile source_;
};

}  // namespace KelmoLibs::Lang
