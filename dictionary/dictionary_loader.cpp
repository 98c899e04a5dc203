#include "dictionary/dictionary_loader.h"

#include <memory>
#include <string_view>

#include "dictionary/dictionary_reader.h"
#include "frame/messages.h"
#include "platform/files.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::int32_t kLoadingFailed = -1;
constexpr std::int32_t kFileNotFound = -2;

}  // namespace

std::int32_t LoadDictionaryFile(const std::wstring& path, CurrentLanguage& currentLanguage,
                                DictionaryTable& dictionaries, ErrorList& errors) {
  try {
    const std::unique_ptr<ByteSource> file = OpenTextFile(path);
    if (!file) {
      errors.Append(DictionaryFileNotFoundMessage(path));
      return kFileNotFound;
    }
    ReadDictionary(*file, currentLanguage, dictionaries, [&](std::wstring_view key) {
      errors.Append(KeyAlreadyDeclaredMessage(key, path));
    });
    return static_cast<std::int32_t>(errors.Count());
  } catch (...) {
    errors.Append(DictionaryLoadingErrorMessage(path));
    return kLoadingFailed;
  }
}

}  // namespace KelmoLibs::Localize
