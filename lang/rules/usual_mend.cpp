#include "lang/rules/usual_mend.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace KelmoLibs::Lang {
namespace {

struct UsualMend {
  std::string_view message;
  const char* mend;  // gets the arguments of the message
};

constexpr UsualMend kUsualMends[] = {
    {"accelerator.missing", "accelerator.missing_mend"},
    {"accelerator.second", "accelerator.second_mend"},
    {"accelerator.surplus", "accelerator.surplus_mend"},
    {"address.missing", "address.missing_mend"},
    {"bracket.message", "bracket.message_mend"},
    {"comment.message.#", "comment.mend"},
    {"doubled-word.message", "doubled-word.text_mend"},
    {"duplicate-key.other_text", "duplicate-key.other_text_mend"},
    {"duplicate-key.same_text", "duplicate-key.same_text_mend"},
    {"empty.message", "empty.mend"},
    {"end-mark.no-colon", "end-mark.mend"},
    {"end-mark.no-ellipsis", "end-mark.mend"},
    {"end-mark.no-question-mark", "end-mark.mend"},
    {"end-mark.surplus", "end-mark.surplus_mend"},
    {"entity.surplus", "entity.surplus_mend"},
    {"foreign-letter.kana", "foreign-letter.mend"},
    {"foreign-letter.layout", "foreign-letter.layout_mend"},
    {"foreign-letter.letter", "foreign-letter.letter_mend"},
    {"foreign-letter.letters", "foreign-letter.mend"},
    {"foreign-letter.no_kana", "foreign-letter.mend"},
    {"foreign-letter.no_letter", "foreign-letter.mend"},
    {"foreign-letter.script", "foreign-letter.letter_mend"},
    {"full-stop.missing", "full-stop.missing_mend"},
    {"full-stop.surplus", "full-stop.surplus_mend"},
    {"look-alike-sign.code", "look-alike-sign.mend"},
    {"look-alike-sign.degree", "look-alike-sign.degree_mend"},
    {"look-alike-sign.sign", "look-alike-sign.mend"},
    {"mixed-script.cyrillic-in-greek", "mixed-script.mend"},
    {"mixed-script.cyrillic-in-latin", "mixed-script.mend"},
    {"mixed-script.greek-in-cyrillic", "mixed-script.mend"},
    {"mixed-script.greek-in-latin", "mixed-script.mend"},
    {"mixed-script.latin-in-cyrillic", "mixed-script.mend"},
    {"mixed-script.latin-in-greek", "mixed-script.mend"},
    {"number.changed", "number.changed_mend"},
    {"number.date", "number.date_mend"},
    {"placeholder.missing", "placeholder.missing_mend"},
    {"placeholder.plural", "placeholder.missing_mend"},
    {"placeholder.unknown", "placeholder.unknown_mend"},
    {"section.message.#", "comment.mend"},
    {"tag.missing", "tag.missing_mend"},
    {"tag.unbalanced", "tag.unbalanced_mend"},
    {"untranslated.message", "untranslated.mend"},
};

}  // namespace

void AddUsualMends(std::vector<Finding>& findings) {
  for (Finding& finding : findings) {
    if (!finding.mend.IsEmpty() || !finding.mendCommand.empty() || !finding.hint.IsEmpty()) {
      continue;
    }
    const auto* const found = std::find_if(
        std::begin(kUsualMends), std::end(kUsualMends),
        [&finding](const UsualMend& usual) { return usual.message == finding.message.key; });
    if (found != std::end(kUsualMends)) {
      finding.mend = {found->mend, finding.message.arguments};
    }
  }
}

}  // namespace KelmoLibs::Lang
