#include "benchmarks/support/catalogue.h"

#include <array>
#include <fstream>
#include <string_view>
#include <utility>

#include "benchmarks/support/require.h"
#include "tests/support/encode_utf8.h"

namespace benchmarks {
namespace {

template <std::size_t kCount>
using Words = std::array<std::wstring_view, kCount>;
using LanguageWords = Words<24>;

constexpr Words<7> kAreas = {L"menu",  L"dialog", L"toolbar", L"status",
                             L"error", L"report", L"settings"};
constexpr Words<7> kObjects = {L"file", L"view", L"sheet", L"table", L"layer", L"axis", L"section"};
constexpr Words<7> kActions = {L"open", L"save", L"print", L"undo", L"rename", L"zoom", L"export"};

constexpr LanguageWords kEnglishWords = {
    L"open",     L"the",    L"file",      L"save", L"drawing", L"all",   L"layers", L"of",
    L"selected", L"print",  L"dimension", L"in",   L"new",     L"sheet", L"value",  L"cannot",
    L"be",       L"larger", L"section",   L"than", L"allowed", L"scale", L"last",   L"units"};
constexpr LanguageWords kGermanWords = {
    L"Öffnen",   L"der",      L"Datei",   L"für", L"Größe",    L"alle",    L"Maße",   L"des",
    L"gewählte", L"Ausdruck", L"Länge",   L"im",  L"neues",    L"Blatt",   L"Wert",   L"darf",
    L"nicht",    L"größer",   L"Schnitt", L"als", L"zulässig", L"Maßstab", L"letzte", L"Einheiten"};
constexpr LanguageWords kRussianWords = {
    L"Открыть", L"все",  L"файлы",     L"для",     L"чертежа", L"слои",
    L"размер",  L"из",   L"выбранный", L"печать",  L"длина",   L"на",
    L"новый",   L"лист", L"значение",  L"не",      L"может",   L"больше",
    L"сечение", L"чем",  L"допустимо", L"масштаб", L"единицы", L"последний"};

constexpr std::size_t kFirstNumber = 100;
constexpr std::size_t kFirstMissingNumber = 2'000'000;  // no catalogue is that large

const LanguageWords& WordsOf(Language language) {
  switch (language) {
    case Language::kGerman:
      return kGermanWords;
    case Language::kRussian:
      return kRussianWords;
    default:
      return kEnglishWords;
  }
}

template <std::size_t kCount>
std::wstring_view RandomWord(const Words<kCount>& words, std::mt19937_64& random) {
  return words[Below(words.size(), random)];
}

std::wstring MakeKey(std::size_t number, std::mt19937_64& random) {
  std::wstring key(RandomWord(kAreas, random));
  key.append(L".").append(RandomWord(kObjects, random));
  if (Below(2, random) == 0) {
    key.append(L".").append(RandomWord(kActions, random));
  }
  return key.append(L"_").append(std::to_wstring(number));
}

std::wstring MakeText(const LanguageWords& words, std::mt19937_64& random) {
  const std::size_t length = 10 + Below(22, random);
  std::wstring text(RandomWord(words, random));
  while (text.size() < length) {
    text.append(L" ").append(RandomWord(words, random));
  }
  return text;
}

}  // namespace

Catalogue MakeCatalogue(Language language, std::size_t size) {
  std::mt19937_64 random = MakeRandomNumbers();
  Catalogue catalogue;
  catalogue.reserve(size);
  for (std::size_t i = 0; i < size; ++i) {
    std::wstring key = MakeKey(kFirstNumber + i, random);
    catalogue.push_back({std::move(key), MakeText(WordsOf(language), random)});
  }
  return catalogue;
}

std::vector<std::wstring> MakeMissingKeys(std::size_t size) {
  std::mt19937_64 random = MakeRandomNumbers();
  std::vector<std::wstring> keys;
  for (std::size_t i = 0; i < size; ++i) {
    keys.push_back(MakeKey(kFirstMissingNumber + i, random));
  }
  return keys;
}

void WriteDictionary(const std::filesystem::path& file, const std::string& id,
                     const Catalogue& catalogue) {
  std::ofstream stream(file, std::ios::binary);
  stream << id << '\n';
  for (const Entry& entry : catalogue) {
    stream << EncodeUtf8(entry.key) << '\t' << EncodeUtf8(entry.text) << '\n';
  }
  stream.close();
  Require(!stream.fail(), "a dictionary cannot be written");
}

// NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the same numbers each time are meant
std::mt19937_64 MakeRandomNumbers() { return {}; }

}  // namespace benchmarks
