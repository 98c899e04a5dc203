#include "tests/model/vocabulary.h"

#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kWords[] = {
    "en",
    "de",
    "k",
    "key",
    "K",
    "key.two",
    "",
    "menu.file.save",
    "\xC3\xA4",
    "k\xC3\xA4y",
    "\xD0\xBC",
    "\xEF\xBB\xBF\x65n",  // behind a byte-order mark
    "\xF0\x9F\x98\x80",
    "a\\nb",
    "k\r",
    "n\0m"sv,
    "//",
    "10001",
    "a.key.that.is.longer.than.any.text.that.lies.inside.its.string"};

// Words for Decorated(). There are few, so that equal ones occur. Their lengths put the added
// character into the first eight bytes of a line or behind them.
constexpr std::string_view kDecoratedWords[] = {"k", "en", "/", "menu.file"};

// The limits of rules for characters, and a few characters of each kind.
constexpr char32_t kEdges[] = {
    // Controls, and Latin letters and signs
    0x7F, 0x80, 0x85, 0x9F, 0xA0, 0xA1, 0xAC, 0xAD, 0xAE, 0xB0, 0xB5, 0xBA, 0xC4, 0xDF, 0xE4, 0xFF,
    0x100, 0x131, 0x17F,
    // Combining marks
    0x300, 0x301, 0x34F, 0x20DD, 0xFE0F,
    // Greek, Cyrillic, Hebrew, an Arabic digit, Devanagari with a vowel sign, Hangul, Chinese
    0x3A9, 0x3BC, 0x400, 0x41C, 0x43C, 0x45F, 0x460, 0x5D0, 0x665, 0x915, 0x93E, 0x1100, 0xAC00,
    0xD7A3, 0x4E2D, 0x20000,
    // Blanks and line separators
    0x1680, 0x180E, 0x2000, 0x2003, 0x2007, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000,
    // Zero-width characters
    0x200B, 0x200D, 0x200E, 0x2060, 0xFEFF, 0xFFF9, 0xE0001,
    // Look like a separator, a slash or a sign of ASCII
    0x2044, 0x2212, 0x20AC, 0xFF0B, 0xFF0F, 0xFF15, 0xFF1D,
    // Limits of the encodings in UTF-8 and UTF-16, private use, noncharacters
    0x7FF, 0x800, 0xD7FF, 0xE000, 0xE001, 0xF8FF, 0xFDD0, 0xFDEF, 0xFFFD, 0xFFFE, 0xFFFF, 0x10000,
    0x1F600, 0x1FFFE, 0x40000, 0xF0000, 0x10FFFD, 0x10FFFE, 0x10FFFF};

// Not valid in UTF-8: halves of surrogate pairs and, if wchar_t has 32 bits, values beyond Unicode.
constexpr wchar_t kNoCharacters[] = {static_cast<wchar_t>(0xD800),   static_cast<wchar_t>(0xDBFF),
                                     static_cast<wchar_t>(0xDC00),   static_cast<wchar_t>(0xDFFF),
                                     static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1)};

// Characters that a faulty library might remove from a host's argument.
const std::wstring kTrimmed[] = {L" ", L"\t", L"\r", L"\n"};

// The first bit is the difference between the two cases of a letter. A faulty library might lose
// one of the others.
constexpr char32_t kBits[] = {0x20, 0x1, 0x80, 0x100, 0x10000};

bool IsCharacter(char32_t c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

char32_t AnyCharacter(RandomNumbers& random) {
  const int chance = random.Below(8);
  if (chance < 4) {
    return static_cast<char32_t>(random.Below(0x80));
  }
  if (chance < 7) {
    return AnyOf(random, kEdges);
  }
  const auto c =
      static_cast<char32_t>(random.Bits() % (std::uint64_t{1} << (8 + random.Below(13))));
  return IsCharacter(c) ? c : U'z';
}

char32_t NeighbourOf(char32_t character, RandomNumbers& random) {
  const char32_t c = character ^ AnyOf(random, kBits);
  return IsCharacter(c) ? c : character;
}

// One of a few, so that files and hosts often use the same word.
std::string NumberedWord(RandomNumbers& random) { return "w" + std::to_string(random.Below(400)); }

}  // namespace

Vocabulary::Vocabulary(RandomNumbers& random) : random_(random), fileName_(L"file") {
  for (std::size_t i = 0; i < characters_.size(); i += 2) {
    characters_[i] = AnyCharacter(random);
    characters_[i + 1] = NeighbourOf(characters_[i], random);
  }
  const char32_t c = characters_[0];
  if (c >= U' ' && U"\"*/:<>?\\|"sv.find(c) == std::u32string_view::npos) {
    fileName_ = L"a" + model::Decode(EncodeUtf8(c)) + L"b";
  }
}

std::string Vocabulary::Character() {
  return EncodeUtf8(random_.Below(8) != 0 ? AnyOf(random_, characters_) : AnyCharacter(random_));
}

std::wstring Vocabulary::WideCharacter() { return model::Decode(Character()); }

std::string Vocabulary::Word() {
  const int chance = random_.Below(24);
  if (chance < 3) {
    return NumberedWord(random_);
  }
  if (chance < 11) {
    return Decorated(AnyOf(random_, kDecoratedWords));
  }
  return std::string(AnyOf(random_, kWords));
}

std::string Vocabulary::Decorated(std::string_view text) {
  std::string character = Character();
  const std::string word(text);
  switch (random_.Below(5)) {
    case 0:
      return character;
    case 1:
      return character + word;
    case 2:
      return word + character;
    case 3:
      return word + character + word;
    default:
      return character + word + character;
  }
}

std::wstring Vocabulary::Changed(std::wstring text) {
  switch (random_.Below(6)) {
    case 0:
      return WideCharacter() + text;
    case 1:
      return text + WideCharacter();
    case 2:
      return text + AnyOf(random_, kTrimmed);
    case 3:
      return text + AnyOf(random_, kNoCharacters);
    case 4:
      return text.substr(0, text.size() / 2);
    default:
      if (!text.empty()) {
        wchar_t& unit =
            text[static_cast<std::size_t>(random_.Below(static_cast<int>(text.size())))];
        unit = static_cast<wchar_t>(static_cast<char32_t>(unit) ^ AnyOf(random_, kBits));
      }
      return text;
  }
}
