#include "lang/rules/header_fault.h"

#include <string>
#include <string_view>

#include "lang/reading/name_language.h"
#include "lang/rules/line_kind.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/blanks.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

bool HasUnicodeBlank(std::string_view text) {
  bool hasBlank = false;
  VisitCodePoints(text, [&hasBlank](char32_t character, std::string_view) {
    hasBlank = BlankOf(character) != Blank::kNo;
    return !hasBlank;
  });
  return hasBlank;
}

// Whether the first line was meant as an entry.
bool IsEntryInHeader(const FileCheck& check) {
  const std::string_view id = check.File().IntendedId();
  const bool isLanguage = !check.FileLanguage().primary.empty();
  const KeyShape shape(check.File().Entries());
  if (!isLanguage && shape.IsKnown() && shape.Fits(id)) {
    return true;
  }
  // A key such as "no" or "ok" may also be an id: then the file has the key too.
  const FoundEntry base = check.FindInBase(id);
  return base && !check.Merged().Find(id) &&
         (!isLanguage || check.File().DisplayName() == base.entry->text);
}

}  // namespace

const char* HeaderFault(const FileCheck& check) {
  const DictionaryFile& file = check.File();
  const std::string_view id = file.IntendedId();
  if (id.empty()) {
    return check.Source().Line(1).find_first_not_of(" \t\r") == std::string_view::npos
               ? "header.blank_line"
               : "header.indented";
  }
  if (KindOf({id, file.DisplayName()}) != LineKind::kEntry) {
    return "header.comment";
  }
  if (HasUnicodeBlank(id)) {
    return "header.unicode_blank";
  }
  return IsEntryInHeader(check) ? "header.entry" : nullptr;
}

const Entry* FindDisplacedHeader(const FileCheck& check) {
  if (check.File().IntendedId().empty() || HeaderFault(check) == nullptr) {
    return nullptr;
  }
  const std::string language =
      CompareWithName(check.File().IntendedId(), check.Source().Name()).language;
  const auto& ids = check.AllFiles().dictionaries;
  for (const Entry& entry : check.File().Entries()) {
    const bool isId = language.empty() ? ids.find(entry.key) != ids.end()
                                       : AreEqualButForCase(entry.key, language);
    if (isId && !entry.key.empty() && !check.FindInBase(entry.key) && !IsBeforeTab(entry)) {
      return &entry;
    }
  }
  return nullptr;
}

}  // namespace KelmoLibs::Lang
