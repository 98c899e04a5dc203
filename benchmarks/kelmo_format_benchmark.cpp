// The cost of filling placeholders: from the arguments of a host to the text in its buffer. The
// peers too get the text at run time. kelmo_view also finds the text by its key.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "benchmarks/support/run_benchmarks.h"
#include "host/c_arguments.h"
#include "host/placeholders.h"
#include "kelmo/kelmo.h"
#include "tests/support/random_numbers.h"

#ifdef KELMO_HAS_FMT
#include <fmt/format.h>
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kCapacity = 512;
constexpr std::size_t kSets = 1024;  // a processor learns to predict a few hundred

using Buffer = std::array<char, kCapacity>;

/// What the arguments of a call are made of.
struct Values {
  std::string text;
  std::int64_t integer;
  double number;
};

std::vector<Values> RandomValues() {
  RandomNumbers random(1);
  std::vector<Values> sets(kSets);
  for (Values& values : sets) {
    values.text = std::string(static_cast<std::size_t>(random.Below(30)), 'x');
    values.integer = random.Below(100000) - 50000;
    values.number = (random.Below(20000001) - 10000000) / 1000.0;
  }
  return sets;
}

kelmo_argument ArgumentOf(const std::string& text) {
  kelmo_argument argument = kelmo_text_argument(text.c_str());
  argument.text.size = text.size();
  return argument;
}
kelmo_argument ArgumentOf(std::int64_t integer) { return kelmo_integer_argument(integer); }
kelmo_argument ArgumentOf(double number) { return kelmo_number_argument(number, KELMO_SHORTEST); }

template <class... Arguments>
std::string_view FilledByKelmo(Buffer& buffer, std::string_view text,
                               const Arguments&... arguments) {
  using namespace KelmoLibs::Host;
  const std::array<kelmo_argument, sizeof...(arguments)> given = {ArgumentOf(arguments)...};
  ArgumentArray taken;
  Require(taken.Take(given.data(), given.size()) == KELMO_OK, "arguments are refused");
  TextSink sink(buffer.data(), buffer.size());
  FillPlaceholders(text, taken.All(), {}, {}, sink, nullptr);
  return {buffer.data(), sink.Finish()};
}

// The rows are the keys.
class ViewOfRow {
 public:
  ViewOfRow(std::string row, const std::string& text) : key_(std::move(row)) {
    const std::string bytes = "en\n" + key_ + " " + text + "\n";
    const kelmo_string language = {"en", 2};
    kelmo_view_options options = {};
    options.size = sizeof options;
    options.languages = &language;
    options.language_count = 1;
    kelmo_loader* loader = nullptr;
    kelmo_texts* texts = nullptr;
    Require(kelmo_loader_create(&loader) == KELMO_OK &&
                kelmo_loader_add_memory(loader, bytes.data(), bytes.size(), "en", 2, nullptr,
                                        nullptr) == KELMO_OK &&
                kelmo_loader_finish(loader, &texts, nullptr) == KELMO_OK &&
                kelmo_view_create(texts, &options, &view_, nullptr) == KELMO_OK,
            "there is no view");
    kelmo_texts_release(texts);
    kelmo_loader_destroy(loader);
  }
  ViewOfRow(const ViewOfRow&) = delete;
  ViewOfRow& operator=(const ViewOfRow&) = delete;
  ~ViewOfRow() { kelmo_view_release(view_); }

  template <class... Arguments>
  std::string_view Fill(Buffer& buffer, const Arguments&... arguments) const {
    const std::array<kelmo_argument, sizeof...(arguments)> given = {ArgumentOf(arguments)...};
    std::size_t size = 0;
    kelmo_view_format(view_, key_.data(), key_.size(), given.data(), given.size(), buffer.data(),
                      buffer.size(), &size, nullptr);
    return {buffer.data(), size};
  }

 private:
  std::string key_;
  kelmo_view* view_ = nullptr;
};

#ifdef KELMO_HAS_FMT
template <class... Arguments>
std::string_view FilledByFmt(Buffer& buffer, std::string_view text, const Arguments&... arguments) {
  const auto end = fmt::format_to_n(buffer.data(), buffer.size(), fmt::runtime(text), arguments...);
  return {buffer.data(), end.size};
}
#endif

const char* Printable(const std::string& text) { return text.c_str(); }
long long Printable(std::int64_t integer) { return integer; }
double Printable(double number) { return number; }

template <class... Arguments>
std::string_view FilledBySnprintf(Buffer& buffer, const char* format,
                                  const Arguments&... arguments) {
  const int size = std::snprintf(buffer.data(), buffer.size(), format, Printable(arguments)...);
  return {buffer.data(), static_cast<std::size_t>(size)};
}

template <class Fill>
void Register(const std::string& row, const char* subject, const std::vector<Values>& sets,
              Fill fill) {
  benchmark::RegisterBenchmark(("format/" + row + "/" + subject).c_str(),
                               [&sets, fill](benchmark::State& state) {
                                 Buffer buffer;
                                 std::size_t i = 0;
                                 for ([[maybe_unused]] auto iteration : state) {
                                   benchmark::DoNotOptimize(fill(buffer, sets[i]));
                                   i = (i + 1) % kSets;
                                 }
                               });
}

// `printfFormat` is null if snprintf has no such format. All subjects give the same text.
template <class... Members>
void RegisterRow(const std::vector<Values>& sets, const char* row, const char* text,
                 const char* printfFormat, Members... members) {
  const std::string_view runtimeText = text;
  const auto byKelmo = [=](Buffer& buffer, const Values& values) {
    return FilledByKelmo(buffer, runtimeText, values.*members...);
  };
  const auto view = std::make_shared<ViewOfRow>(row, text);
  const auto byView = [=](Buffer& buffer, const Values& values) {
    return view->Fill(buffer, values.*members...);
  };
  const auto bySnprintf = [=](Buffer& buffer, const Values& values) {
    return FilledBySnprintf(buffer, printfFormat, values.*members...);
  };
#ifdef KELMO_HAS_FMT
  const auto byFmt = [=](Buffer& buffer, const Values& values) {
    return FilledByFmt(buffer, runtimeText, values.*members...);
  };
#endif
  for (const Values& values : sets) {
    Buffer buffer;
    const std::string expected(byKelmo(buffer, values));
    Require(byView(buffer, values) == expected, "the view gives another text");
    Require(printfFormat == nullptr || bySnprintf(buffer, values) == expected,
            "snprintf gives another text");
#ifdef KELMO_HAS_FMT
    Require(byFmt(buffer, values) == expected, "fmt gives another text");
#endif
  }
  Register(row, "kelmo", sets, byKelmo);
  Register(row, "kelmo_view", sets, byView);
#ifdef KELMO_HAS_FMT
  Register(row, "fmt", sets, byFmt);
#endif
  if (printfFormat != nullptr) {
    Register(row, "snprintf", sets, bySnprintf);
  }
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  const std::vector<Values> sets = RandomValues();
  constexpr auto kText = &Values::text;
  constexpr auto kInteger = &Values::integer;
  constexpr auto kNumber = &Values::number;
  RegisterRow(sets, "text", "The file {0} cannot be opened.", "The file %s cannot be opened.",
              kText);
  RegisterRow(sets, "integer", "{0} files", "%lld files", kInteger);
  RegisterRow(sets, "rounded", "{0:.2f} bar", "%.2f bar", kNumber);
  RegisterRow(sets, "shortest", "{0} bar", nullptr, kNumber);
  RegisterRow(sets, "width", "{0:>12.3f}{1:6}", "%12.3f%6lld", kNumber, kInteger);
  RegisterRow(sets, "three", "{0}: {1} of {2:.1f} kW", "%s: %lld of %.1f kW", kText, kInteger,
              kNumber);
  RegisterRow(sets, "five", "Pump {0}: {1} rpm, {2:.1f} m, {3:.3f} kW, {4}",
              "Pump %s: %lld rpm, %.1f m, %.3f kW, %s", kText, kInteger, kNumber, kNumber, kText);
  return RunBenchmarks(argc, argv);
}
