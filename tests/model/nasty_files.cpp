#include "tests/model/nasty_files.h"

#include <string_view>

#include "tests/support/invalid_utf8.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kSeparators[] = {" ", "\t", "  ", " \t ", "\t\t"};
// At the end of a line; the last CR in front of an LF is a part of the line end.
constexpr std::string_view kLineTails[] = {
    " ", "\t", "  ", " \t ", "\r\r", "\r\r\r", " \r\r", " \r\r\r", "\r ", "\0"sv, kByteOrderMark};
constexpr std::string_view kComments[] = {"//", "// ", " //", " // "};
constexpr std::string_view kLineEnds[] = {"\n", "\r\n", "\n\n", "\r\r\n", "\n\r\n", "\r"};
constexpr std::string_view kNasty[] = {"\0"sv,     "\0"sv, "\x1A", "\x1A\n", "\r\x1A", "\r",
                                       "\n",       " ",    "\t",   "\x0B",   "\x0C",   "\x7F",
                                       "\x01\x1F", "//",   "/",    "\\",     "\""};

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
                                       "5//6",
                                       "\xE2\x88\x92\x35",  // minus sign U+2212 and a five
                                       "\xD9\xA5",          // an Arabic five
                                       "\xE2\x80\x83",      // an em space
                                       "\xE2\x80\x83\x35",  // an em space and a five
                                       "\xE3\x80\x80"};     // an ideographic space
constexpr std::string_view kSymbols[] = {"m",  "\xD0\xBC", "\xC2\xB0", "in", "m//2",
                                         "//", "/",        "m\x01x",   "7"};
constexpr std::string_view kNames[] = {
    "meter",          "square meter", "name \t", "two  words\r",     "me\xC2\xADter",
    "x // a comment", "a//b",         "/",       "\xF0\x9F\x98\x80", "",
    "n\0m"sv};

// Mostly blanks; sometimes a character, alone or behind blanks.
std::string AnySeparator(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  const int chance = random.Below(24);
  std::string separator = chance > 0 ? std::string(AnyOf(random, kSeparators)) : "";
  if (chance < 2) {
    separator += words.Character();
  }
  return separator;
}

// The same for a unit table, in which a comment may begin anywhere.
std::string AnySeparatorOfFields(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  return random.Below(10) == 0 ? std::string(AnyOf(random, kComments)) : AnySeparator(words);
}

// One of `fields` of a unit table, unchanged or with an additional character or slash.
template <class Fields>
std::string AnyField(Vocabulary& words, const Fields& fields) {
  RandomNumbers& random = words.Random();
  std::string field(AnyOf(random, fields));
  const int chance = random.Below(16);
  if (chance < 7) {
    return words.Decorated(field);
  }
  switch (chance) {
    case 7:
      return "/" + field;
    case 8:
      return field + "/";
    case 9:
      return field + "/" + field;
    default:
      return field;
  }
}

// Any bytes. Those that end the text are rare, so that the library reads most of a file.
std::string AnyBytes(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  switch (random.Below(14)) {
    case 0:
      return std::string(AnyOf(random, kSeparators));
    case 1:
    case 2:
      return std::string(AnyOf(random, kLineEnds));
    case 3:
    case 4:
    case 5:
      return words.Word();
    case 6:
      return random.Below(8) == 0 ? std::string(1, static_cast<char>(random.Bits())) : "x";
    case 7:
      return random.Below(4) == 0 ? std::string(AnyOf(random, kInvalidUtf8).bytes) : "y";
    case 8:
    case 9:
      return words.Character();
    default:
      return std::string(AnyOf(random, kNasty));
  }
}

std::string RandomBytes(Vocabulary& words) {
  std::string bytes;
  for (int count = words.Random().Below(60); count > 0; --count) {
    bytes += AnyBytes(words);
  }
  return bytes;
}

bool IsBlankOrLineEnd(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Half of the offsets are at the begin or end of a word or of a run of blanks, where most rules
// apply.
std::size_t AnyOffset(RandomNumbers& random, const std::string& bytes) {
  auto offset = static_cast<std::size_t>(random.Below(static_cast<int>(bytes.size()) + 1));
  if (random.Below(2) == 0) {
    while (offset > 0 && offset < bytes.size() && !IsBlankOrLineEnd(bytes[offset - 1]) &&
           !IsBlankOrLineEnd(bytes[offset])) {
      ++offset;
    }
  }
  return offset;
}

// Inserts unexpected bytes into `bytes`, and sometimes truncates them.
void Corrupt(Vocabulary& words, std::string& bytes) {
  RandomNumbers& random = words.Random();
  for (int count = random.Below(6); count > 0; --count) {
    const std::size_t offset = AnyOffset(random, bytes);
    bytes.insert(offset, random.Below(8) != 0 ? AnyBytes(words)
                                              : std::string(AnyOf(random, kInvalidUtf8).bytes));
  }
  if (random.Below(8) == 0) {
    bytes.resize(bytes.size() - static_cast<std::size_t>(random.Below(4)) % (bytes.size() + 1));
  }
}

// Inserts a repeated text. Every fifth run is so long that the library reads the file in chunks.
// The ends of the chunks then fall anywhere into the repeated text.
void AddALongRun(RandomNumbers& random, std::string& bytes) {
  constexpr int kChunk = 32768;
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
  const int length = random.Below(5) == 0 ? 2 * kChunk + random.Below(kChunk) : random.Below(3000);
  const int offset = random.Below(static_cast<int>(bytes.size()) + 1);
  std::string inserted;
  while (inserted.size() < static_cast<std::size_t>(length)) {
    inserted += run;
  }
  bytes.insert(static_cast<std::size_t>(offset), inserted);
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
std::string FileOf(Vocabulary& words, Line line) {
  RandomNumbers& random = words.Random();
  std::string bytes = random.Below(8) == 0 ? RandomBytes(words) : LinesOfAFile(random, line);
  if (random.Below(24) == 0) {
    bytes.insert(0, kByteOrderMark);
  }
  if (random.Below(2) == 0) {
    Corrupt(words, bytes);
  }
  if (random.Below(16) == 0) {
    AddALongRun(random, bytes);
  }
  return bytes;
}

// Every second header is valid: behind an invalid one the library reads nothing.
std::string HeaderOfALanguageTable(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  const std::string language = random.Below(2) == 0 ? "ru" : words.Word();
  if (random.Below(2) == 0) {
    return language + std::string(AnyOf(random, kSeparators)) + "Language";
  }
  std::string line = random.Below(8) == 0 ? AnySeparatorOfFields(words) : "";
  line += language + AnySeparatorOfFields(words);
  line += random.Below(2) == 0 ? "Language" : words.Word();
  if (random.Below(2) == 0) {
    line +=
        random.Below(4) == 0 ? std::string(AnyOf(random, kComments)) : AnySeparatorOfFields(words);
    line += random.Below(2) == 0 ? words.Word() : "";
  }
  return line;
}

}  // namespace

std::string DictionaryBytes(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  return FileOf(words, [&](bool isFirst) {
    std::string line = random.Below(24) == 0 ? AnySeparator(words) : "";
    line += isFirst && random.Below(2) == 0 ? "en" : words.Word();
    if (random.Below(6) != 0) {
      line += AnySeparator(words);
      for (int count = random.Below(4); count > 0; --count) {
        line += words.Word();
        line += count > 1 ? AnySeparator(words) : "";
      }
    }
    line += random.Below(4) == 0 ? AnyOf(random, kLineTails) : "";
    return line;
  });
}

std::string LanguageTableBytes(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  return FileOf(words, [&](bool isFirst) {
    if (isFirst && random.Below(8) != 0) {
      return HeaderOfALanguageTable(words);
    }
    std::string line = random.Below(10) == 0 ? AnySeparatorOfFields(words) : "";
    line += AnyField(words, kCodes);
    line += AnySeparatorOfFields(words);
    line += AnyField(words, kSymbols);
    if (random.Below(6) != 0) {
      line += AnySeparatorOfFields(words);
      line += AnyField(words, kNames);
    }
    line += random.Below(8) == 0 ? AnySeparatorOfFields(words) : "";
    return line;
  });
}
