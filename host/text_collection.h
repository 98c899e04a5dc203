// The languages and files of a loader, or of the texts that it has sealed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/language_texts.h"

namespace KelmoLibs::Host {

/// The entries of a file that overrides others: those of its language from `firstEntry` on that have
/// its number.
struct OverrideFile {
  const LanguageTexts* language;
  std::size_t firstEntry;
  std::uint32_t file;
};

/// Languages and files keep their addresses when it is moved.
struct TextCollection {
  // Those of the program, then those that only overrides have; both in the order of loading.
  std::vector<std::unique_ptr<LanguageTexts>> languages;
  std::vector<std::unique_ptr<const std::string>> files;  // as the host named them
  std::vector<OverrideFile> overrides;                    // in the order of loading

  /// The language with that id, or null. There are few languages.
  LanguageTexts* FindLanguage(std::string_view id) const noexcept {
    for (const auto& language : languages) {
      if (language->Id() == id) {
        return language.get();
      }
    }
    return nullptr;
  }
};

}  // namespace KelmoLibs::Host
