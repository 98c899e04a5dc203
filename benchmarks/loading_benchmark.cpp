// Loading a dictionary file for the first time, and loading it again.
//
// A program loads a catalogue once, into fresh memory. So each load here starts with fresh memory
// too: it does not reuse the memory of the previous round.

#include <malloc.h>

#include <chrono>
#include <fstream>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/hostile_catalogue.h"
#include "benchmarks/support/library_instance.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "tests/support/encode_utf8.h"

#ifdef KELMO_HAS_SIMDJSON
#include <simdjson.h>
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {1'000, 10'000, 100'000, 1'000'000};

struct DictionaryFile {
  std::wstring id;
  std::filesystem::path path;
  std::string json;  // path of the same entries as a JSON object
};

// ---- The library

void CheckLibrary(const DictionaryFile& file, const Catalogue& catalogue) {
  const LibraryInstance library;
  library.Load(file.path, 0);
  for (const Entry& entry : catalogue) {
    Require(library.lang(entry.key.c_str()) == entry.text, "a text was loaded wrongly");
  }
  Require(library.getErrorsCount() == 0, "a load or a lookup gave a message");
  const auto messages = static_cast<std::int64_t>(catalogue.size());
  library.Load(file.path, messages);
  Require(library.getError(0) == L"EL101. Key already declared.\nKey: " + catalogue[0].key +
                                     L"\nDictionary: " + file.path.parent_path().wstring() + L"\\" +
                                     file.path.filename().wstring(),
          "a message is wrong");
}

// ---- simdjson: a JSON object of the same entries, loaded into a map of the standard library

#ifdef KELMO_HAS_SIMDJSON
using JsonTexts = std::unordered_map<std::string, std::string>;

void LoadJson(const std::string& path, simdjson::ondemand::parser& parser, JsonTexts& texts) {
  const simdjson::padded_string json = simdjson::padded_string::load(path);
  simdjson::ondemand::document document = parser.iterate(json);
  for (simdjson::ondemand::field field : document.get_object()) {
    const std::string_view key = field.unescaped_key();
    const std::string_view text = field.value().get_string();
    texts.emplace(key, text);
  }
}

/// For a program that loads one catalogue and does not know its number of entries.
JsonTexts LoadJson(const std::string& path) {
  simdjson::ondemand::parser parser;
  JsonTexts texts;
  LoadJson(path, parser, texts);
  return texts;
}

void WriteJson(const DictionaryFile& file, const Catalogue& catalogue) {
  std::ofstream stream(file.json, std::ios::binary);
  char before = '{';
  for (const Entry& entry : catalogue) {
    stream << before << "\n\"" << EncodeUtf8(entry.key) << "\": \"" << EncodeUtf8(entry.text)
           << '"';
    before = ',';
  }
  stream << "\n}\n";
  stream.close();
  Require(!stream.fail(), "a JSON file cannot be written");
}

void CheckSimdjson(const DictionaryFile& file, const Catalogue& catalogue) {
  const JsonTexts texts = LoadJson(file.json);
  for (const Entry& entry : catalogue) {
    Require(texts.at(EncodeUtf8(entry.key)) == EncodeUtf8(entry.text),
            "simdjson has loaded a text wrongly");
  }
}

// ---- The minimum that loading has to do: read the bytes, validate and decode them

struct WideText {
  std::unique_ptr<wchar_t[]> characters;
  std::size_t length;
};

/// Precondition: `bytes` are valid UTF-8. Returns the number of characters in `out`.
std::size_t Decode(const char* bytes, std::size_t size, wchar_t* out) {
  const auto* next = reinterpret_cast<const unsigned char*>(bytes);
  const unsigned char* const end = next + size;
  const auto continuation = [&next] { return static_cast<unsigned>(*next++ & 0x3F); };
  wchar_t* const begin = out;
  while (next != end) {
    const unsigned lead = *next++;
    unsigned c = lead;
    if (lead >= 0xF0) {
      c = (lead & 0x07U) << 18U | continuation() << 12U;
      c |= continuation() << 6U;
      c |= continuation();
    } else if (lead >= 0xE0) {
      c = (lead & 0x0FU) << 12U | continuation() << 6U;
      c |= continuation();
    } else if (lead >= 0x80) {
      c = (lead & 0x1FU) << 6U | continuation();
    }
    *out++ = static_cast<wchar_t>(c);
  }
  return static_cast<std::size_t>(out - begin);
}

WideText ReadValidateDecode(const std::filesystem::path& path) {
  const std::size_t size = std::filesystem::file_size(path);
  const std::unique_ptr<char[]> bytes(new char[size]);
  std::ifstream stream(path, std::ios::binary);
  stream.read(bytes.get(), static_cast<std::streamsize>(size));
  Require(stream.good(), "a file cannot be read");
  Require(simdjson::validate_utf8(bytes.get(), size), "a file is not UTF-8");
  WideText text{std::unique_ptr<wchar_t[]>(new wchar_t[size]), 0};
  text.length = Decode(bytes.get(), size, text.characters.get());
  return text;
}

void CheckDecoding(const DictionaryFile& file, const Catalogue& catalogue) {
  const WideText text = ReadValidateDecode(file.path);
  std::wstring expected = file.id + L"\n";
  for (const Entry& entry : catalogue) {
    expected.append(entry.key).append(L"\t").append(entry.text).append(L"\n");
  }
  Require(std::wstring_view(text.characters.get(), text.length) == expected,
          "a file was decoded wrongly");
}
#endif

// ---- Timing

struct Row {
  const char* name;
  Catalogue (*makeCatalogue)(std::size_t size);
};

template <Language kLanguage>
Catalogue Make(std::size_t size) {
  return MakeCatalogue(kLanguage, size);
}

constexpr Row kEnglish = {"english", Make<Language::kEnglish>};
constexpr Row kGerman = {"german", Make<Language::kGerman>};
constexpr Row kRussian = {"russian", Make<Language::kRussian>};
constexpr Row kHostile = {"hostile", MakeHostileCatalogue};

template <const Alphabet& kAlphabet>
Catalogue MakeShortTexts(std::size_t size) {
  return MakeCatalogueInLetters(kAlphabet, {20, 30}, size);
}

template <const Alphabet& kAlphabet>
Catalogue MakeLongTexts(std::size_t size) {
  return MakeCatalogueInLetters(kAlphabet, {300, 300}, size);
}

constexpr std::size_t kRandomTextSizes[] = {1'000, 100'000};
constexpr Row kRandomTextRows[] = {
    {"script_english", MakeShortTexts<kEnglishLetters>},
    {"script_german", MakeShortTexts<kGermanLetters>},
    {"script_russian", MakeShortTexts<kRussianLetters>},
    {"script_greek", MakeShortTexts<kGreekLetters>},
    {"script_hindi", MakeShortTexts<kHindiLetters>},
    {"script_chinese", MakeShortTexts<kChineseLetters>},
    {"script_korean", MakeShortTexts<kKoreanLetters>},
    {"script_emoji", MakeShortTexts<kEmoji>},
    {"long_texts_english", MakeLongTexts<kEnglishLetters>},
    {"long_texts_chinese", MakeLongTexts<kChineseLetters>},
};

/// Makes and checks the file at the first call. The catalogue is not kept: it would fragment the
/// heap and slow down subjects that allocate many small blocks.
const DictionaryFile& FileOf(const Row& row, std::size_t size) {
  static std::map<std::pair<std::string, std::size_t>, DictionaryFile> files;
  const auto [position, added] = files.try_emplace({row.name, size});
  DictionaryFile& file = position->second;
  if (added) {
    const std::string id = row.name;
    const Catalogue catalogue = row.makeCatalogue(size);
    file.id.assign(id.begin(), id.end());
    file.path = ScratchFolder() / (id + "_" + std::to_string(size) + ".txt");
    WriteDictionary(file.path, id, catalogue);
    CheckLibrary(file, catalogue);
#ifdef KELMO_HAS_SIMDJSON
    file.json = file.path.string() + ".json";
    WriteJson(file, catalogue);
    CheckSimdjson(file, catalogue);
    CheckDecoding(file, catalogue);
#endif
  }
  return file;
}

/// Sets the time of the iteration: that of `work`, with fresh memory.
template <class Work>
void TimeIteration(benchmark::State& state, Work work) {
  ::malloc_trim(0);
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  state.SetIterationTime(time.count());
}

void FirstLoad(benchmark::State& state, const Row& row, std::size_t size) {
  const DictionaryFile& file = FileOf(row, size);
  for ([[maybe_unused]] const auto iteration : state) {
    const LibraryInstance library;
    TimeIteration(state, [&] { library.Load(file.path, 0); });
  }
  SetOperations(state, size);
}

/// Each entry gives a message.
void SecondLoad(benchmark::State& state, const Row& row, std::size_t size) {
  const DictionaryFile& file = FileOf(row, size);
  const auto messages = static_cast<std::int64_t>(size);
  for ([[maybe_unused]] const auto iteration : state) {
    const LibraryInstance library;
    library.Load(file.path, 0);
    TimeIteration(state, [&] { library.Load(file.path, messages); });
  }
  SetOperations(state, size);
}

#ifdef KELMO_HAS_SIMDJSON
void LoadWithSimdjson(benchmark::State& state, const Row& row, std::size_t size) {
  const DictionaryFile& file = FileOf(row, size);
  for ([[maybe_unused]] const auto iteration : state) {
    JsonTexts texts;
    TimeIteration(state, [&] { texts = LoadJson(file.json); });
  }
  SetOperations(state, size);
}

/// The best case for simdjson: its parser reuses the memory of the previous load, and the map gets
/// the number of entries in advance.
void LoadReservedWithSimdjson(benchmark::State& state, const Row& row, std::size_t size) {
  const DictionaryFile& file = FileOf(row, size);
  simdjson::ondemand::parser parser;
  for ([[maybe_unused]] const auto iteration : state) {
    JsonTexts texts;
    TimeIteration(state, [&] {
      texts.reserve(size);
      LoadJson(file.json, parser, texts);
    });
  }
  SetOperations(state, size);
}

void ReadOnly(benchmark::State& state, const Row& row, std::size_t size) {
  const DictionaryFile& file = FileOf(row, size);
  for ([[maybe_unused]] const auto iteration : state) {
    WideText text;
    TimeIteration(state, [&] { text = ReadValidateDecode(file.path); });
    benchmark::DoNotOptimize(text.characters.get());
  }
  SetOperations(state, size);
}
#endif

void Register(const std::string& name, void (*run)(benchmark::State&, const Row&, std::size_t),
              const Row& row, std::size_t size) {
  benchmark::RegisterBenchmark(NameWithSize("loading/" + name, size).c_str(), run, row, size)
      ->UseManualTime();
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  for (const std::size_t size : kSizes) {
    for (const Row& row : {kEnglish, kGerman, kRussian}) {
      const std::string name = row.name;
      Register(name + "/kelmo", FirstLoad, row, size);
#ifdef KELMO_HAS_SIMDJSON
      Register(name + "/simdjson", LoadWithSimdjson, row, size);
      Register(name + "/simdjson_reserved", LoadReservedWithSimdjson, row, size);
      Register(name + "/read_validate_decode", ReadOnly, row, size);
#endif
    }
    Register("again/kelmo_first", FirstLoad, kEnglish, size);
    Register("again/kelmo_second", SecondLoad, kEnglish, size);
  }
  for (const std::size_t size : kRandomTextSizes) {
    for (const Row& row : kRandomTextRows) {
      const std::string name = row.name;
      Register(name + "/kelmo", FirstLoad, row, size);
#ifdef KELMO_HAS_SIMDJSON
      Register(name + "/simdjson", LoadWithSimdjson, row, size);
      Register(name + "/read_validate_decode", ReadOnly, row, size);
#endif
    }
  }
  for (const std::size_t size : kHostileSizes) {
    Register("hostile/kelmo", FirstLoad, kHostile, size);
    Register("hostile/kelmo_usual", FirstLoad, kEnglish, size);
  }
  return RunBenchmarks(argc, argv);
}
