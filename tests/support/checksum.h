// For programs with generated operations: a checksum of the results, which is compared between
// builds.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tests/support/bits.h"
#include "tests/support/random_numbers.h"

class Checksum {
 public:
  void Add(std::uint64_t bits) {
    for (unsigned i = 0; i < 64; i += 8) {
      sum_ = (sum_ ^ ((bits >> i) & 0xFFU)) * 0x100000001B3;  // FNV-1a
    }
  }
  /// All NaN count as equal: their bits and their sign depend on the processor and the compiler.
  void Add(double number) { Add(std::isnan(number) ? ~std::uint64_t{0} : BitsOf(number)); }
  void Add(bool holds) { Add(std::uint64_t{holds ? 1U : 0U}); }
  void Add(int number) { Add(static_cast<std::uint64_t>(number)); }
  void AddText(std::wstring_view text) { AddEach(text); }
  void AddText(std::string_view ascii) { AddEach(ascii); }
  std::uint64_t Sum() const { return sum_; }

 private:
  template <class Text>
  void AddEach(Text text) {
    for (const auto c : text) {
      Add(static_cast<std::uint64_t>(c));
    }
    Add(std::uint64_t{text.size()});
  }

  std::uint64_t sum_ = 0xCBF29CE484222325;
};

/// The number of operations and the seed: --digest=N and --seed=N on the command line, or those of
/// the golden files.
struct Generated {
  std::uint64_t count = 10000;
  std::uint64_t seed = 1;

  Generated(int argumentCount, char** arguments) {
    for (int i = 1; i < argumentCount; ++i) {
      if (!Take(arguments[i], "--digest=", count) && !Take(arguments[i], "--seed=", seed)) {
        std::fprintf(stderr, "unknown argument: %s\n", arguments[i]);
        std::exit(2);  // NOLINT(concurrency-mt-unsafe)
      }
    }
  }

  /// Prints the checksum of `count` calls of `operate`.
  template <class Operate>
  void Print(const char* what, Operate operate) const {
    RandomNumbers random(seed);
    Checksum checksum;
    for (std::uint64_t i = 0; i < count; ++i) {
      operate(random, checksum);
    }
    std::printf("%llu %s: %016llx\n", static_cast<unsigned long long>(count), what,
                static_cast<unsigned long long>(checksum.Sum()));
  }

 private:
  static bool Take(const char* argument, const char* name, std::uint64_t& number) {
    const std::size_t length = std::strlen(name);
    if (std::strncmp(argument, name, length) != 0) {
      return false;
    }
    number = std::strtoull(argument + length, nullptr, 10);
    return true;
  }
};
