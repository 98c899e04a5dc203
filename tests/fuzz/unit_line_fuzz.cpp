// Splits a line of a unit table into all of its fields or the first few, and reads their numbers.
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <string>
#include <vector>

#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/support/bits.h"
#include "unittables/unit_line.h"

using namespace KelmoLibs::Localize;

namespace {

void CompareFields(const std::wstring& line, std::size_t count) {
  const auto wanted = static_cast<std::int32_t>(count);
  const std::vector<std::wstring> expected = model::SplitUnitLine(line, count);
  for (const std::size_t maxFields : {count, count + 1, SIZE_MAX}) {
    std::wstring copy = line;
    const std::vector<std::wstring_view> fields = SplitUnitLine(copy, wanted, maxFields);
    const std::size_t number = std::min(expected.size(), maxFields);
    if (fields.size() != number || !std::equal(fields.begin(), fields.end(), expected.begin())) {
      throw Disagreement("the fields of a line");
    }
    for (const std::wstring_view field : fields) {
      if (std::wcslen(field.data()) != field.size()) {
        throw Disagreement("the zero that ends a field");
      }
    }
  }
  for (const std::wstring& field : expected) {
    if (IntegerField(field.c_str()) != model::IntegerOf(field)) {
      throw Disagreement("the integer of a field");
    }
    if (BitsOf(NumberField(field.c_str())) != BitsOf(std::wcstod(field.c_str(), nullptr))) {
      throw Disagreement("the number of a field");
    }
  }
}

}  // namespace

void CheckWith(std::string_view bytes) {
  const std::wstring line = model::Decode(std::string(bytes));
  for (const std::size_t count : {2U, 3U, 4U}) {
    CompareFields(line, count);
  }
}
