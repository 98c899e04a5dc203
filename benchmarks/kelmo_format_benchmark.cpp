// The cost of filling placeholders: from the arguments of a host to the text in its buffer. The
// peers too get the text at run time.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
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
    Require(printfFormat == nullptr || bySnprintf(buffer, values) == expected,
            "snprintf gives another text");
#ifdef KELMO_HAS_FMT
    Require(byFmt(buffer, values) == expected, "fmt gives another text");
#endif
  }
  Register(row, "kelmo", sets, byKelmo);
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
