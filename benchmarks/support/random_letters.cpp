#include "benchmarks/support/random_letters.h"

#include <unordered_set>

namespace benchmarks {
namespace {

constexpr std::size_t kCharactersPerBlank = 6;

wchar_t RandomLetter(Alphabet alphabet, std::mt19937_64& random) {
  const std::size_t range = 2 * Below(alphabet.size() / 2, random);
  const auto letters = static_cast<std::size_t>(alphabet[range + 1] - alphabet[range]) + 1;
  return static_cast<wchar_t>(alphabet[range] + static_cast<wchar_t>(Below(letters, random)));
}

std::size_t RandomLength(Lengths lengths, std::mt19937_64& random) {
  return lengths.shortest + Below(lengths.longest - lengths.shortest + 1, random);
}

std::wstring MakeWord(Alphabet alphabet, Lengths lengths, std::mt19937_64& random) {
  std::wstring word(RandomLength(lengths, random), L'\0');
  for (wchar_t& letter : word) {
    letter = RandomLetter(alphabet, random);
  }
  return word;
}

/// No blank at either end, where the library removes it, and no two blanks in a row.
std::wstring MakeText(Alphabet alphabet, Lengths lengths, std::mt19937_64& random) {
  std::wstring text = MakeWord(alphabet, lengths, random);
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i - 1] != L' ' && Below(kCharactersPerBlank, random) == 0) {
      text[i] = L' ';
    }
  }
  return text;
}

void SetTexts(Catalogue& catalogue, Alphabet alphabet, Lengths lengths) {
  std::mt19937_64 random = MakeRandomNumbers();
  for (Entry& entry : catalogue) {
    entry.text = MakeText(alphabet, lengths, random);
  }
}

}  // namespace

std::vector<std::wstring> MakeRandomKeys(Alphabet alphabet, Lengths lengths, std::size_t size) {
  std::mt19937_64 random = MakeRandomNumbers();
  std::vector<std::wstring> keys;
  std::unordered_set<std::wstring> known;
  while (keys.size() < size) {
    const std::wstring key = MakeWord(alphabet, lengths, random);
    if (known.insert(key).second) {
      keys.push_back(key);
    }
  }
  return keys;
}

Catalogue MakeCatalogueOfKeys(const std::vector<std::wstring>& keys) {
  Catalogue catalogue;
  catalogue.reserve(keys.size());
  for (const std::wstring& key : keys) {
    catalogue.push_back({key, L""});
  }
  SetTexts(catalogue, kEnglishLetters, {20, 30});
  return catalogue;
}

Catalogue MakeCatalogueInLetters(Alphabet alphabet, Lengths textLengths, std::size_t size) {
  Catalogue catalogue = MakeCatalogue(Language::kEnglish, size);
  SetTexts(catalogue, alphabet, textLengths);
  return catalogue;
}

}  // namespace benchmarks
