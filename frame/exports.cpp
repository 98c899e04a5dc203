// The exported functions. Each passes its arguments and the process-wide objects to one function of
// the core.
#include <string_view>

#include "dictionary/dictionary_loader.h"
#include "dictionary/lookup.h"
#include "frame/error_list.h"
#include "frame/library_state.h"
#include "kelmo_localizer.h"
#include "text/file_path.h"
#include "unittables/default_table.h"
#include "unittables/language_table.h"

using namespace KelmoLibs::Localize;
using Phyval::unitCatalogue;

namespace {

std::wstring_view TextOrEmpty(const wchar_t* text) noexcept {
  return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}

}  // namespace

extern "C" {

int32_t Init(const wchar_t* folder, const wchar_t* language) {
  LoadDefaultUnitTable(false, unitCatalogue);
  LoadLanguageUnitTable(TextOrEmpty(folder), LanguageUnitTableName(TextOrEmpty(language)),
                        localizedUnitTable, loadMessages);
  return 0;
}

int32_t Init0(const wchar_t* folder) {
  LoadDefaultUnitTable(false, unitCatalogue);
  LoadLanguageUnitTable(TextOrEmpty(folder), kNeutralUnitTableName, localizedUnitTable,
                        loadMessages);
  return 0;
}

int32_t ExportPhyVal() {
  LoadDefaultUnitTable(true, unitCatalogue);
  return 0;
}

int32_t LoadDictionary(const wchar_t* folder, const wchar_t* fileName) {
  return LoadDictionaryFile(JoinPath(TextOrEmpty(folder), TextOrEmpty(fileName)), currentLanguage,
                            dictionaries, errorList);
}

int32_t UseLanguage(const wchar_t* id) {
  return SelectDictionary(TextOrEmpty(id), currentLanguage, dictionaries, errorList);
}

const wchar_t* LANG(const wchar_t* key) { return FindText(key, currentLanguage, errorList); }

void ClearErrors() { errorList.Clear(); }

int64_t GetErrorsCount() { return errorList.Count(); }

const wchar_t* GetError(int32_t index) { return errorList.At(index); }

}  // extern "C"
