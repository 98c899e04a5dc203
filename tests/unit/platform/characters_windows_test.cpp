#include <gtest/gtest.h>

#include <cwctype>

#include "platform/characters.h"

namespace KelmoLibs::Localize {
namespace {

// Runtimes differ, for instance in the no-break space.
TEST(CharacterClass, EqualsThatOfTheRuntimeForEveryCharacter) {
  for (int code = 0; code <= 0xFFFF; ++code) {
    const auto c = static_cast<wchar_t>(code);
    ASSERT_EQ(IsGraphic(c), std::iswgraph(c) != 0) << code;
    ASSERT_EQ(IsBlank(c), std::iswblank(c) != 0) << code;
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
