// The languages and files of a loader, or of the texts that it has sealed.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/language_texts.h"

namespace KelmoLibs::Host {

/// Languages and files keep their addresses when it is moved.
struct TextCollection {
  std::vector<std::unique_ptr<LanguageTexts>> languages;  // in the order of loading
  std::vector<std::unique_ptr<const std::string>> files;  // as the host named them

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
