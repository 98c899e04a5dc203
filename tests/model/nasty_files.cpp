#include "tests/model/nasty_files.h"

#include <string_view>

#include "tests/support/encode_utf8.h"
#include "tests/support/invalid_utf8.h"

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
constexpr std::string_view kSeparators[] = {" ", "\t", "  ", " \t ", "\t\t"};
constexpr std::string_view kLineEnds[] = {"\n", "\r\n", "\n\n", "\r\r\n", "\n\r\n", "\r"};
constexpr std::string_view kNasty[] = {"\0"sv,     "\0"sv, "\x1A", "\x1A\n", "\r\x1A", "\r",
                                       "\n",       " ",    "\t",   "\x0B",   "\x0C",   "\x7F",
                                       "\x01\x1F", "//",   "/",    "\\",     "\""};

// Where rules for characters begin and end, and blanks of other scripts.
constexpr char32_t kEdges[] = {0x7F,   0x80,    0x85,    0x9F,    0xA0,    0xAD,     0x7FF,
                               0x800,  0x1680,  0x2003,  0x2007,  0x2028,  0x202F,   0x20AC,
                               0x3000, 0xD7FF,  0xE000,  0xE001,  0xFEFF,  0xFFFD,   0xFFFE,
                               0xFFFF, 0x10000, 0x1F600, 0x40000, 0xE0001, 0x10FFFE, 0x10FFFF};

constexpr std::string_view kCodes[] = {"10001",
                                       "10002",
                                       "40002",
                                       "-5",
                                       "+7",
                                       "abc",
                                       "0x10",
                                       "12x",
                                       "1e3",
                                       "007",
                                       "99999999999",
                                       "-99999999999",
                                       "0",
                                       "2147483648",
                                       "\xD9\xA5",          // an Arabic five
                                       "\xE2\x80\x83",      // an em space alone
                                       "\xE2\x80\x83\x35",  // and in front of a five
                                       "\xE3\x80\x80"};     // an ideographic space alone
constexpr std::string_view kSymbols[] = {"m",    "\xD0\xBC", "\xC2\xB0", "in",
                                         "m//2", "//",       "m\x01x",   "7"};
constexpr std::string_view kNames[] = {
    "meter",          "square meter",     "name \t", "two  words\r", "me\xC2\xADter",
    "x // a comment", "\xF0\x9F\x98\x80", "",        "n\0m"sv};

// Mostly one of a few, so that files and hosts name the same.
std::string NumberedWord(RandomNumbers& random) { return "w" + std::to_string(random.Below(400)); }

std::string AnyCharacter(RandomNumbers& random) {
  if (random.Below(2) == 0) {
    return EncodeUtf8(AnyOf(random, kEdges));
  }
  const auto c =
      static_cast<char32_t>(random.Bits() % (std::uint64_t{1} << (8 + random.Below(13))));
  return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF) ? EncodeUtf8(c) : "z";
}

// Anything at all; what ends the text is rare enough that files are read for a while.
std::string AnyBytes(RandomNumbers& random) {
  switch (random.Below(14)) {
    case 0:
      return std::string(AnyOf(random, kSeparators));
    case 1:
    case 2:
      return std::string(AnyOf(random, kLineEnds));
    case 3:
    case 4:
    case 5:
      return AnyWord(random);
    case 6:
      return random.Below(8) == 0 ? std::string(1, static_cast<char>(random.Bits())) : "x";
    case 7:
      return random.Below(4) == 0 ? std::string(AnyOf(random, kInvalidUtf8).bytes) : "y";
    case 8:
    case 9:
      return AnyCharacter(random);
    default:
      return std::string(AnyOf(random, kNasty));
  }
}

std::string Soup(RandomNumbers& random) {
  std::string bytes;
  for (int count = random.Below(60); count > 0; --count) {
    bytes += AnyBytes(random);
  }
  return bytes;
}

// Puts what does not belong there somewhere into `bytes`.
void Spoil(RandomNumbers& random, std::string& bytes) {
  for (int count = random.Below(4); count > 0; --count) {
    const int place = random.Below(static_cast<int>(bytes.size()) + 1);
    bytes.insert(static_cast<std::size_t>(place), AnyBytes(random));
  }
  if (random.Below(8) == 0) {
    bytes.resize(bytes.size() - static_cast<std::size_t>(random.Below(4)) % (bytes.size() + 1));
  }
}

// The same again and again; one time in five until the file is so large that it is read in pieces,
// whose ends then lie anywhere in what is repeated.
void AddALongRun(RandomNumbers& random, std::string& bytes) {
  constexpr int kPiece = 65536;
  constexpr std::string_view kRuns[] = {" ",
                                        "x",
                                        "\n",
                                        "\r",
                                        "\r\n",
                                        "\r\0"sv,
                                        "\xF0\x9F\x98\x80",
                                        "\xE2\x82\xAC\r\n",
                                        "k x\n",
                                        "en y\r\n",
                                        "7 m n\r\n"};
  const std::string_view run = AnyOf(random, kRuns);
  const int length = random.Below(5) == 0 ? 2 * kPiece + random.Below(kPiece) : random.Below(3000);
  const int place = random.Below(static_cast<int>(bytes.size()) + 1);
  std::string inserted;
  while (inserted.size() < static_cast<std::size_t>(length)) {
    inserted += run;
  }
  bytes.insert(static_cast<std::size_t>(place), inserted);
}

template <class Line>
std::string LinesOfAFile(RandomNumbers& random, Line line) {
  std::string bytes;
  for (int count = random.Below(14); count > 0; --count) {
    bytes += line(bytes.empty());
    bytes += random.Below(3) == 0 ? AnyOf(random, kLineEnds) : "\n"sv;
  }
  if (random.Below(10) == 0) {
    for (int count = random.Below(100); count > 0; --count) {
      bytes += line(bytes.empty()) + "\n";
    }
  }
  return bytes;
}

template <class Line>
std::string FileOf(RandomNumbers& random, Line line) {
  std::string bytes = random.Below(8) == 0 ? Soup(random) : LinesOfAFile(random, line);
  if (random.Below(2) == 0) {
    Spoil(random, bytes);
  }
  if (random.Below(16) == 0) {
    AddALongRun(random, bytes);
  }
  return bytes;
}

}  // namespace

std::string AnyWord(RandomNumbers& random) {
  return random.Below(8) == 0 ? NumberedWord(random) : std::string(AnyOf(random, kWords));
}

std::string DictionaryBytes(RandomNumbers& random) {
  return FileOf(random, [&](bool isFirst) {
    std::string line = isFirst && random.Below(2) == 0 ? "en" : AnyWord(random);
    if (random.Below(6) != 0) {
      line += AnyOf(random, kSeparators);
      for (int words = random.Below(4); words > 0; --words) {
        line += AnyWord(random);
        line += words > 1 || random.Below(4) == 0 ? AnyOf(random, kSeparators) : ""sv;
      }
    }
    return line;
  });
}

std::string LanguageTableBytes(RandomNumbers& random) {
  return FileOf(random, [&](bool isFirst) {
    std::string line;
    if (isFirst && random.Below(8) != 0) {
      line = random.Below(2) == 0 ? "ru" : AnyWord(random);
      line += AnyOf(random, kSeparators);
      line += random.Below(4) != 0 ? "Language" : AnyWord(random);
      return line;
    }
    if (random.Below(10) == 0) {
      line += AnyOf(random, kSeparators);
    }
    if (random.Below(20) == 0) {
      line += AnyCharacter(random);
    }
    line += AnyOf(random, kCodes);
    line += AnyOf(random, kSeparators);
    line += AnyOf(random, kSymbols);
    if (random.Below(6) != 0) {
      line += AnyOf(random, kSeparators);
      line += AnyOf(random, kNames);
    }
    return line;
  });
}
