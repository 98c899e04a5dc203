#include "lang/rules/unit_encoding.h"

#include <string_view>
#include <vector>

#include "lang/reading/language.h"
#include "lang/rules/encoding_mend.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

// The lines from the fault on that are not UTF-8; of a long file only the first ones.
std::vector<std::string_view> FaultyLines(const UnitFile& file) {
  constexpr std::uint32_t kMostLines = 200;
  constexpr std::size_t kLongestLine = 10'000;
  const SourceFile& source = file.Source();
  const std::uint32_t first = source.LineOf(source.Raw().data() + file.StopsAt());
  std::vector<std::string_view> lines;
  for (std::uint32_t i = first; i <= source.LineCount() && i - first < kMostLines; ++i) {
    const std::string_view line = source.Line(i);
    if (Localize::WellFormedUtf8Length(line) < line.size()) {
      lines.push_back(line.substr(0, kLongestLine));
    }
  }
  return lines;
}

}  // namespace

void AddEncodingMend(const UnitFile& file, Finding& finding) {
  if (file.Source().EncodedAsUtf16() != Utf16::kNo) {
    AddUtf16Mend(file.Source(), finding);
  } else {
    AddCodePageMend(file.Source(), FaultyLines(file),
                    BytesBeyondAscii(file.Source().Bytes().substr(file.StopsAt())),
                    LanguageOf(file.LanguageKey()).primary, finding);
  }
}

}  // namespace KelmoLibs::Lang
