#include "lang/unicode/scripts.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "lang/unicode/look_alikes.h"

namespace KelmoLibs::Lang {
namespace {

constexpr Script kNone = Script::kNone;
constexpr Script kMark = Script::kMark;
constexpr Script kLatin = Script::kLatin;
constexpr Script kGreek = Script::kGreek;
constexpr Script kCyrillic = Script::kCyrillic;
constexpr Script kOther = Script::kOther;

struct Range {
  char32_t first;
  Script script;  // of `first` and all characters up to the next range
};

// From Unicode 14. Gaps without characters are closed, and so are small gaps of other characters
// between letters that are neither Latin nor Greek nor Cyrillic.
// clang-format off
constexpr Range kRanges[] = {
    {0x0000, kNone},
    {0x0041, kLatin}, {0x005B, kNone}, {0x0061, kLatin}, {0x007B, kNone},
    {0x00AA, kLatin}, {0x00AB, kNone}, {0x00BA, kLatin}, {0x00BB, kNone},
    {0x00C0, kLatin}, {0x00D7, kNone}, {0x00D8, kLatin}, {0x00F7, kNone}, {0x00F8, kLatin},
    {0x02B9, kNone}, {0x0300, kMark},
    {0x0370, kGreek}, {0x0375, kNone}, {0x0376, kGreek}, {0x037E, kNone}, {0x037F, kGreek},
    {0x0380, kNone}, {0x0386, kGreek}, {0x0387, kNone}, {0x0388, kGreek}, {0x03E2, kOther},
    {0x03F0, kGreek}, {0x03F6, kNone}, {0x03F7, kGreek},
    {0x0400, kCyrillic}, {0x0482, kNone}, {0x0483, kMark}, {0x048A, kCyrillic},
    {0x0531, kOther}, {0x055A, kNone}, {0x0560, kOther}, {0x0589, kNone},  // Armenian
    {0x0591, kOther}, {0x05BE, kNone}, {0x05BF, kOther}, {0x05C0, kNone},  // Hebrew
    {0x05C1, kOther}, {0x05C3, kNone}, {0x05C4, kOther}, {0x05C6, kNone}, {0x05C7, kOther},
    {0x05F3, kNone},
    {0x0610, kOther}, {0x061B, kNone}, {0x0620, kOther}, {0x066A, kNone},  // Arabic
    {0x066E, kOther}, {0x06D4, kNone}, {0x06D5, kOther}, {0x0700, kNone}, {0x0710, kOther},
    {0x0964, kNone}, {0x0966, kOther}, {0x0970, kNone}, {0x0971, kOther},  // of India
    {0x0DF4, kNone}, {0x0E01, kOther}, {0x0E3F, kNone}, {0x0E40, kOther},  // Thai
    {0x0E4F, kNone}, {0x0E50, kOther}, {0x0E5A, kNone}, {0x0E81, kOther},
    {0x0F01, kNone}, {0x0F18, kOther}, {0x104A, kNone}, {0x1050, kOther},  // Tibetan, Burmese
    {0x10FB, kNone}, {0x10FC, kOther}, {0x1360, kNone}, {0x1369, kOther},  // Ethiopic
    {0x17D4, kNone}, {0x17D7, kOther}, {0x17D8, kNone}, {0x17DC, kOther},  // Khmer
    {0x1800, kNone}, {0x180B, kOther}, {0x180E, kNone}, {0x180F, kOther},
    {0x1AB0, kMark}, {0x1B00, kOther},
    {0x1C80, kCyrillic}, {0x1C90, kOther}, {0x1D00, kLatin}, {0x1D26, kGreek}, {0x1D2B, kCyrillic},
    {0x1D2C, kLatin}, {0x1D66, kGreek}, {0x1D6B, kLatin}, {0x1D78, kCyrillic}, {0x1D79, kLatin},
    {0x1DC0, kMark}, {0x1E00, kLatin}, {0x1F00, kGreek},
    {0x2000, kNone}, {0x2071, kLatin}, {0x2072, kNone}, {0x207F, kLatin}, {0x2080, kNone},
    {0x2090, kLatin}, {0x20A0, kNone}, {0x20D0, kMark}, {0x2100, kNone},
    {0x2C00, kOther}, {0x2C60, kLatin}, {0x2C80, kOther}, {0x2DE0, kMark}, {0x2E00, kNone},
    {0x3005, kOther}, {0x3008, kNone}, {0x3021, kOther}, {0x3030, kNone}, {0x3031, kOther},  // Kana
    {0x303D, kNone}, {0x3041, kOther}, {0x30FB, kNone}, {0x30FC, kOther}, {0x3200, kNone},
    {0x3400, kOther}, {0x4DC0, kNone}, {0x4E00, kOther}, {0xA490, kNone}, {0xA4D0, kOther},
    {0xA640, kCyrillic}, {0xA6A0, kOther}, {0xA700, kNone}, {0xA722, kLatin}, {0xA800, kOther},
    {0xAB30, kLatin}, {0xAB65, kGreek}, {0xAB66, kLatin}, {0xAB70, kOther},
    {0xD800, kNone}, {0xF900, kOther}, {0xFB00, kLatin}, {0xFB13, kOther}, {0xFD3E, kNone},
    {0xFD50, kOther}, {0xFDFC, kNone}, {0xFE20, kMark}, {0xFE30, kNone}, {0xFE70, kOther},
    {0xFEFF, kNone}, {0xFF21, kLatin}, {0xFF3B, kNone}, {0xFF41, kLatin}, {0xFF5B, kNone},
    {0xFF66, kOther}, {0xFFE0, kNone}, {0x10000, kOther}, {0x1CF00, kNone}, {0x1DF00, kLatin},
    {0x1E000, kOther}, {0x1F000, kNone}, {0x20000, kOther}, {0xE0000, kNone},
};
// clang-format on

// The Latin letters that look like one of the script.
constexpr std::string_view kLikeCyrillic = "ABCEHIJKMOPSTXYacehijopsxy";
constexpr std::string_view kLikeGreek = "ABEHIKMNOPTXYZov";

}  // namespace

Script ScriptOf(char32_t character) noexcept {
  if (character < 0x80U) {
    const char32_t lowerCase = character | 0x20U;
    return lowerCase >= 'a' && lowerCase <= 'z' ? kLatin : kNone;
  }
  return std::prev(std::upper_bound(
                       std::begin(kRanges), std::end(kRanges), character,
                       [](char32_t value, const Range& range) { return value < range.first; }))
      ->script;
}

bool LooksLikeLetterOf(Script script, char32_t character) noexcept {
  const char32_t latin = AsciiLookAlike(character);
  if (ScriptOf(latin) != kLatin || ScriptOf(character) == script) {
    return false;
  }
  const std::string_view letters = script == kCyrillic ? kLikeCyrillic : kLikeGreek;
  return script == kLatin ||
         (latin < 0x80U && letters.find(static_cast<char>(latin)) != std::string_view::npos);
}

}  // namespace KelmoLibs::Lang
