// What the wording of an English text tells about the marks at the end of its translations. Other
// languages may word it in another way. Texts of other languages rarely answer true.
// Tests: wording_test.cpp.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

/// Whether the program continues the text: "depends on", "in". Other languages put a colon there, as
/// their words come in another order.
bool IsBeginOfSentence(std::string_view text);

/// Whether the text has a question within a sentence: "Whether it runs", "Where to save". Others ask
/// it.
bool HasIndirectQuestion(std::string_view text);

/// Whether the text is a guess: "Perhaps it is full?" Others ask or state it.
bool IsGuess(std::string_view text);

/// Whether the text says what the program is doing: "Loading %1", "The file is empty. Skipping." In
/// others an ellipsis says that it goes on.
bool IsProgress(std::string_view text);

/// Whether the text names only a part of a list: "(, [, etc." Others have an ellipsis.
bool IsOpenList(std::string_view text);

/// Whether the text points to what stands below it. Others have a colon.
bool PointsBelow(std::string_view text);

}  // namespace KelmoLibs::Lang
