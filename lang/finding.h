// A finding of the checker: what is wrong, where, how bad it is, and how to mend it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lang/reading/source_file.h"
#include "lang/rules/rule.h"
#include "lang/texts/sentence.h"

namespace KelmoLibs::Lang {

/// Another place that explains a finding, such as the text of the base.
struct RelatedPlace {
  Place place;
  Sentence message;
};

struct Finding {
  RuleId rule;
  Severity severity;
  Place place;
  std::string id;   // of the dictionary
  std::string key;  // of the entry, or code of the unit; empty if there is none
  Sentence message;
  Sentence hint;            // stands beneath the marked characters
  Sentence mend;            // what to do
  std::string mendCommand;  // a command that mends it, without the name of the program
  std::vector<RelatedPlace> related;
};

}  // namespace KelmoLibs::Lang
