// The C functions of kelmo.h. Each checks its arguments, calls the core and makes a status of what
// it throws. kelmo.h has the contracts.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cldr/number_formats.h"
#include "host/argument.h"
#include "host/c_arguments.h"
#include "host/c_objects.h"
#include "host/formatted_text.h"
#include "host/language_match.h"
#include "host/number_text.h"
#include "host/plural_count.h"
#include "host/text_sink.h"
#include "kelmo/kelmo.h"
#include "platform/system_languages.h"
#include "platform/user_number_format.h"
#include "storage/inlining.h"
#include "text/utf8_characters.h"

using KelmoLibs::Cldr::NumberFormat;
using KelmoLibs::Host::Argument;
using KelmoLibs::Host::ArgumentArray;
using KelmoLibs::Host::Destroy;
using KelmoLibs::Host::FoundText;
using KelmoLibs::Host::Give;
using KelmoLibs::Host::GiveSize;
using KelmoLibs::Host::Guard;
using KelmoLibs::Host::IsLargeEnough;
using KelmoLibs::Host::IsString;
using KelmoLibs::Host::kLongestUsualKey;
using KelmoLibs::Host::LanguageTexts;
using KelmoLibs::Host::ListOf;
using KelmoLibs::Host::Make;
using KelmoLibs::Host::MissingText;
using KelmoLibs::Host::PluralCount;
using KelmoLibs::Host::Problem;
using KelmoLibs::Host::ReadingOptions;
using KelmoLibs::Host::Release;
using KelmoLibs::Host::Retain;
using KelmoLibs::Host::StringOf;
using KelmoLibs::Host::Take;
using KelmoLibs::Host::TextCollection;
using KelmoLibs::Host::TextRecord;
using KelmoLibs::Host::TextSink;
using KelmoLibs::Host::ViewOptions;
using KelmoLibs::Localize::IsUtf8;
using KelmoLibs::Localize::UserNumberFormat;

namespace {

// ---- Results

// Fills all fields of the caller's struct but its size. One by one: copying a whole struct that was
// just written would wait for the writes.
void Describe(const TextCollection& texts, const LanguageTexts& language, const TextRecord& record,
              kelmo_text& text) noexcept {
  static_assert(KelmoLibs::Host::kFirstSize<kelmo_text> == sizeof text, "look at text.size");
  text.line = record.line;
  text.utf8 = record.Text().data();
  text.utf8_size = record.textSize;
  text.utf16 = record.Utf16();
  text.utf16_size = text.utf16 != nullptr ? record.utf16Size : 0;
  text.language = Give(language.Id());
  text.key = Give(record.Key());
  text.file = Give(*texts.files[record.file]);
}

// kelmo_view_text is a chain of functions. For a usual key that is found at once, all calls are
// jumps but for the one that finds the end of the key, and nothing is kept on the stack. The
// functions have at most four arguments, because Windows passes no more in registers.

const char* GiveText(std::string_view text, std::size_t* size) noexcept {
  GiveSize(text.size(), size);
  return text.data();
}

KELMO_LOCALIZER_NEVER_INLINE const char* TextAmongAll(const kelmo_view* view, const char* key,
                                                      std::size_t keySize,
                                                      std::size_t* size) noexcept {
  const std::string_view text(key, keySize);
  const FoundText found = view->view.FindAmongAll(text);
  if (found.record != nullptr) {
    return GiveText(found.record->Text(), size);
  }
  view->view.TellMissing(text, nullptr);
  const std::string_view missing = view->view.TextForMissing(text);
  return GiveText(missing.data() != nullptr ? missing : "", size);
}

KELMO_LOCALIZER_ALWAYS_INLINE const char* TextOfCandidate(const kelmo_view* view, const char* key,
                                                          std::size_t keySize,
                                                          std::size_t* size) noexcept {
  const TextRecord* const record = view->view.FindFirstCandidate({key, keySize});
  return record != nullptr ? GiveText(record->Text(), size)
                           : TextAmongAll(view, key, keySize, size);
}

KELMO_LOCALIZER_NEVER_INLINE const char* TextOfLongKey(const kelmo_view* view, const char* key,
                                                       std::size_t keySize,
                                                       std::size_t* size) noexcept {
  return TextOfCandidate(view, key, keySize, size);
}

// With a known size, the hash and the comparison of the key are a few instructions.
KELMO_LOCALIZER_NEVER_INLINE const char* TextOfOneByte(const kelmo_view* view, const char* key,
                                                       std::size_t* size) noexcept {
  return TextOfCandidate(view, key, 1, size);
}

KELMO_LOCALIZER_NEVER_INLINE const char* TextOf(const kelmo_view* view, const char* key,
                                                std::size_t keySize, std::size_t* size) noexcept {
  if (keySize == 1) {
    return TextOfOneByte(view, key, size);
  }
  return keySize > kLongestUsualKey ? TextOfLongKey(view, key, keySize, size)
                                    : TextOfCandidate(view, key, keySize, size);
}

KELMO_LOCALIZER_NEVER_INLINE const char* TextOfTerminated(const kelmo_view* view, const char* key,
                                                          std::size_t* size) noexcept {
  if (key[0] != '\0' && key[1] == '\0') {
    return TextOfOneByte(view, key, size);
  }
  return TextOf(view, key, std::strlen(key), size);
}

kelmo_status Tell(const kelmo_view& view, std::string_view key, const FoundText& found,
                  kelmo_text& result) noexcept {
  if (found.record == nullptr) {
    view.view.TellMissing(key, nullptr);
    return KELMO_NOT_FOUND;
  }
  Describe(view.view.Texts(), *found.language, *found.record, result);
  return KELMO_OK;
}

template <std::size_t size>
void GiveMark(std::string_view mark, char (&field)[size]) noexcept {
  static_assert(size > KelmoLibs::Cldr::kLongestMark);
  std::memcpy(field, mark.data(), mark.size());  // the rest of the field is zero
}

// Precondition: the caller's struct is large enough; no mark is longer than kLongestMark.
void GiveNumberFormat(const NumberFormat& format, kelmo_number_format* result) noexcept {
  kelmo_number_format given = {};
  given.group_size = format.groupSize;
  given.further_group_size = format.furtherGroupSize;
  given.minimum_first_group = format.minimumFirstGroup;
  given.zero_digit = format.zeroDigit;
  GiveMark(format.decimalMark, given.decimal_mark);
  GiveMark(format.groupMark, given.group_mark);
  GiveMark(format.minusSign, given.minus_sign);
  Give(given, result);
}

// Checks the arguments of the loading functions and calls `load` with them.
template <class Load>
kelmo_status LoadWith(kelmo_loader* loader, const char* name, std::size_t nameSize,
                      const kelmo_load_options* options, Load load) noexcept {
  kelmo_load_options known = {};
  constexpr std::uint32_t kFlags = KELMO_LOAD_LENIENT | KELMO_LOAD_UTF16 | KELMO_LOAD_PERCENT |
                                   KELMO_LOAD_OVERRIDE | KELMO_LOAD_OPTIONAL |
                                   KELMO_LOAD_LINE_BREAKS;
  if (loader == nullptr || !IsString(name, nameSize) || !Take(options, known) ||
      (known.flags & ~kFlags) != 0) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view text = StringOf(name, nameSize);
  if (!IsUtf8(text)) {
    return KELMO_INVALID_UTF8;
  }
  const ReadingOptions reading{
      (known.flags & KELMO_LOAD_LENIENT) != 0,  (known.flags & KELMO_LOAD_UTF16) != 0,
      (known.flags & KELMO_LOAD_PERCENT) != 0,  (known.flags & KELMO_LOAD_OVERRIDE) != 0,
      (known.flags & KELMO_LOAD_OPTIONAL) != 0, (known.flags & KELMO_LOAD_LINE_BREAKS) != 0};
  return Guard([&] { return load(text, reading) ? KELMO_OK : KELMO_CANNOT_READ; });
}

}  // namespace

extern "C" {
// NOLINTBEGIN(readability-identifier-naming): the names of kelmo.h

uint32_t kelmo_version(void) { return KELMO_VERSION; }

const char* kelmo_status_name(kelmo_status status) {
  switch (status) {
    case KELMO_OK:
      return "KELMO_OK";
    case KELMO_NOT_FOUND:
      return "KELMO_NOT_FOUND";
    case KELMO_INVALID_ARGUMENT:
      return "KELMO_INVALID_ARGUMENT";
    case KELMO_OUT_OF_MEMORY:
      return "KELMO_OUT_OF_MEMORY";
    case KELMO_CANNOT_READ:
      return "KELMO_CANNOT_READ";
    case KELMO_INVALID_UTF8:
      return "KELMO_INVALID_UTF8";
    case KELMO_UNKNOWN_UNIT:
      return "KELMO_UNKNOWN_UNIT";
    case KELMO_DIFFERENT_KINDS:
      return "KELMO_DIFFERENT_KINDS";
    case KELMO_POINT_UNIT:
      return "KELMO_POINT_UNIT";
    case KELMO_CANNOT_ROUND:
      return "KELMO_CANNOT_ROUND";
    case KELMO_AMBIGUOUS_UNIT:
      return "KELMO_AMBIGUOUS_UNIT";
    case KELMO_INVALID_TEXT:
      return "KELMO_INVALID_TEXT";
    default:
      return "unknown status";
  }
}

// ---- Problems

kelmo_status kelmo_problems_create(kelmo_problems** result) {
  return Make(result, [] { return std::make_unique<kelmo_problems>(); });
}

void kelmo_problems_destroy(kelmo_problems* problems) { Destroy(problems); }

size_t kelmo_problems_count(const kelmo_problems* problems) {
  return problems != nullptr ? problems->list.All().size() : 0;
}

size_t kelmo_problems_lost(const kelmo_problems* problems) {
  return problems != nullptr ? problems->list.Lost() : 0;
}

kelmo_status kelmo_problems_get(const kelmo_problems* problems, size_t index,
                                kelmo_problem* result) {
  if (index >= kelmo_problems_count(problems) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const Problem& problem = problems->list.All()[index];
  kelmo_problem given = {};
  given.code = static_cast<int32_t>(problem.code);
  given.severity = static_cast<int32_t>(problem.severity);
  given.line = problem.line;
  given.column = problem.column;
  given.sentence = Give(KelmoLibs::Host::SentenceOf(problem.code));
  given.key = Give(problem.key);
  given.language = Give(problem.language);
  given.file = Give(problem.file);
  given.detail = Give(problem.detail);
  Give(given, result);
  return KELMO_OK;
}

kelmo_status kelmo_problems_print(const kelmo_problems* problems, size_t index, char* buffer,
                                  size_t capacity, size_t* needed) {
  if (index >= kelmo_problems_count(problems) || (buffer == nullptr && capacity != 0)) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([&] {
    TextSink sink(buffer, capacity);
    sink.Append(KelmoLibs::Host::Print(problems->list.All()[index]));
    GiveSize(sink.Finish(), needed);
    return KELMO_OK;
  });
}

void kelmo_problems_clear(kelmo_problems* problems) {
  if (problems != nullptr) {
    problems->list.Clear();
  }
}

// ---- Loading

kelmo_status kelmo_loader_create(kelmo_loader** result) {
  return Make(result, [] { return std::make_unique<kelmo_loader>(); });
}

void kelmo_loader_destroy(kelmo_loader* loader) { Destroy(loader); }

kelmo_status kelmo_loader_add_file(kelmo_loader* loader, const char* path, size_t path_size,
                                   const kelmo_load_options* options, kelmo_problems* problems) {
  return LoadWith(loader, path, path_size, options, [=](std::string_view name, auto& reading) {
    return loader->loader.AddFile(std::string(name), reading, ListOf(problems));
  });
}

kelmo_status kelmo_loader_add_folder(kelmo_loader* loader, const char* path, size_t path_size,
                                     const kelmo_load_options* options, kelmo_problems* problems) {
  return LoadWith(loader, path, path_size, options, [=](std::string_view name, auto& reading) {
    return loader->loader.AddFolder(std::string(name), reading, ListOf(problems));
  });
}

kelmo_status kelmo_loader_add_memory(kelmo_loader* loader, const void* bytes, size_t size,
                                     const char* name, size_t name_size,
                                     const kelmo_load_options* options, kelmo_problems* problems) {
  const char* const data = static_cast<const char*>(bytes);
  if (!IsString(data, size)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view content = StringOf(data, size);
  return LoadWith(loader, name, name_size, options, [=](std::string_view text, auto& reading) {
    loader->loader.AddMemory(content, text, reading, ListOf(problems));
    return true;
  });
}

// ---- Texts

kelmo_status kelmo_loader_finish(kelmo_loader* loader, kelmo_texts** result,
                                 kelmo_problems* problems) {
  if (loader == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Make(result, [=] {
    auto sealed = std::make_unique<kelmo_texts>();
    sealed->texts = loader->loader.Finish(ListOf(problems));
    return sealed;
  });
}

kelmo_texts* kelmo_texts_retain(kelmo_texts* texts) { return Retain(texts); }

void kelmo_texts_release(kelmo_texts* texts) { Release(texts); }

size_t kelmo_texts_language_count(const kelmo_texts* texts) {
  return texts != nullptr ? texts->texts.languages.size() : 0;
}

kelmo_status kelmo_texts_language(const kelmo_texts* texts, size_t index, kelmo_language* result) {
  if (index >= kelmo_texts_language_count(texts) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const LanguageTexts& language = *texts->texts.languages[index];
  Give(kelmo_language{0, 0, Give(language.Id()), Give(language.Name()), language.Entries().size()},
       result);
  return KELMO_OK;
}

kelmo_status kelmo_texts_match_language(const kelmo_texts* texts, const char* wanted,
                                        size_t wanted_size, size_t rank, size_t* index) {
  if (texts == nullptr || !IsString(wanted, wanted_size) || index == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view id = StringOf(wanted, wanted_size);
  if (!IsUtf8(id)) {
    return KELMO_INVALID_UTF8;
  }
  return Guard([&] {
    const auto found = KelmoLibs::Host::MatchLanguage(texts->texts, id, rank);
    if (!found) {
      return kelmo_status{KELMO_NOT_FOUND};
    }
    *index = *found;
    return kelmo_status{KELMO_OK};
  });
}

kelmo_status kelmo_texts_entry(const kelmo_texts* texts, size_t language, size_t index,
                               kelmo_text* result) {
  if (language >= kelmo_texts_language_count(texts) ||
      index >= texts->texts.languages[language]->Entries().size() || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const TextRecord& record = *texts->texts.languages[language]->Entries()[index];
  Describe(texts->texts, *texts->texts.languages[language], record, *result);
  return KELMO_OK;
}

// ---- Numbers

kelmo_status kelmo_number_format_of_language(const char* id, size_t id_size,
                                             kelmo_number_format* result) {
  if (!IsString(id, id_size) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view language = StringOf(id, id_size);
  if (!IsUtf8(language)) {
    return KELMO_INVALID_UTF8;
  }
  const NumberFormat* const format = KelmoLibs::Cldr::FindNumberFormat(language);
  if (format == nullptr) {
    return KELMO_NOT_FOUND;
  }
  GiveNumberFormat(*format, result);
  return KELMO_OK;
}

kelmo_status kelmo_number_format_of_user(kelmo_number_format* result) {
  if (!IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([result] {
    const auto found = KelmoLibs::Localize::NumberFormatOfUser();
    if (const auto* const language = std::get_if<std::string>(&found)) {
      const NumberFormat* const format = KelmoLibs::Cldr::FindNumberFormat(*language);
      // Digits of a script would surprise a user who reads another language in this program.
      if (format == nullptr || format->zeroDigit != U'0') {
        return kelmo_status{KELMO_NOT_FOUND};
      }
      GiveNumberFormat(*format, result);
      return kelmo_status{KELMO_OK};
    }
    const auto& user = *std::get_if<UserNumberFormat>(&found);
    NumberFormat format;
    format.decimalMark = user.decimalMark;
    format.groupMark = user.groupMark;
    format.minusSign = user.minusSign;
    format.groupSize = user.groups.first;
    format.furtherGroupSize = user.groups.further;
    GiveNumberFormat(format, result);
    return kelmo_status{KELMO_OK};
  });
}

kelmo_status kelmo_number_print(const kelmo_number_format* format, const kelmo_argument* number,
                                char* buffer, size_t capacity, size_t* needed) {
  NumberFormat written;
  Argument argument;
  if (!IsLargeEnough(number) || (buffer == nullptr && capacity != 0)) {
    return KELMO_INVALID_ARGUMENT;
  }
  kelmo_status status =
      format != nullptr ? KelmoLibs::Host::TakeNumberFormat(*format, written) : KELMO_OK;
  if (status == KELMO_OK) {
    status = KelmoLibs::Host::TakeArgument(*number, argument);
  }
  if (status != KELMO_OK) {
    return status;
  }
  if (!argument.IsNumber()) {
    return KELMO_INVALID_ARGUMENT;
  }
  TextSink sink(buffer, capacity);
  KelmoLibs::Host::WriteNumber(argument, {}, written, sink);
  GiveSize(sink.Finish(), needed);
  return KELMO_OK;
}

// ---- Views

kelmo_status kelmo_view_create(kelmo_texts* texts, const kelmo_view_options* options,
                               kelmo_view** result, kelmo_problems* problems) {
  kelmo_view_options known = {};
  if (texts == nullptr || !Take(options, known) ||
      (known.languages == nullptr && known.language_count != 0) ||
      (known.flags & ~std::uint32_t{KELMO_VIEW_ISOLATE}) != 0 ||
      known.missing < KELMO_MISSING_KEY || known.missing > KELMO_MISSING_MARKED) {
    return KELMO_INVALID_ARGUMENT;
  }
  NumberFormat numbers;
  if (known.numbers != nullptr) {
    const kelmo_status status = KelmoLibs::Host::TakeNumberFormat(*known.numbers, numbers);
    if (status != KELMO_OK) {
      return status;
    }
  }
  return Guard([&] {
    ViewOptions taken;
    taken.missing = static_cast<MissingText>(known.missing);
    taken.problemLimit = known.problem_limit;
    taken.isIsolating = (known.flags & KELMO_VIEW_ISOLATE) != 0;
    taken.numbers = known.numbers != nullptr ? &numbers : nullptr;
    taken.languages.reserve(known.language_count);
    for (std::size_t i = 0; i < known.language_count; ++i) {
      const kelmo_string& given = known.languages[i];
      if (!IsString(given.data, given.size)) {
        return kelmo_status{KELMO_INVALID_ARGUMENT};
      }
      const std::string_view id = StringOf(given.data, given.size);
      if (!IsUtf8(id)) {
        return kelmo_status{KELMO_INVALID_UTF8};
      }
      taken.languages.push_back(id);
    }
    return Make(result,
                [&] { return std::make_unique<kelmo_view>(texts, taken, ListOf(problems)); });
  });
}

kelmo_view* kelmo_view_retain(kelmo_view* view) { return Retain(view); }

void kelmo_view_release(kelmo_view* view) { Release(view); }

kelmo_texts* kelmo_view_texts(const kelmo_view* view) {
  return view != nullptr ? view->texts.get() : nullptr;
}

const char* kelmo_view_text(const kelmo_view* view, const char* key, size_t key_size,
                            size_t* size) {
  if (view == nullptr || !IsString(key, key_size)) {
    return GiveText("", size);
  }
  return key_size == KELMO_ZERO_TERMINATED ? TextOfTerminated(view, key, size)
                                           : TextOf(view, key, key_size, size);
}

kelmo_status kelmo_view_find(const kelmo_view* view, const char* key, size_t key_size,
                             const kelmo_argument* count, kelmo_text* result) {
  if (view == nullptr || !IsString(key, key_size) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  if (count == nullptr) {
    const std::string_view text = StringOf(key, key_size);
    return Tell(*view, text, view->view.Find(text), *result);
  }
  Argument number;
  if (!IsLargeEnough(count)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const kelmo_status status = KelmoLibs::Host::TakeArgument(*count, number);
  if (status != KELMO_OK) {
    return status;
  }
  if (!number.IsNumber()) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([&] {
    const std::string_view text = StringOf(key, key_size);
    return Tell(*view, text, view->view.FindForm(text, PluralCount(number)), *result);
  });
}

kelmo_status kelmo_view_format(const kelmo_view* view, const char* key, size_t key_size,
                               const kelmo_argument* arguments, size_t argument_count, char* buffer,
                               size_t capacity, size_t* needed, kelmo_problems* problems) {
  if (view == nullptr || !IsString(key, key_size) || (buffer == nullptr && capacity != 0)) {
    return KELMO_INVALID_ARGUMENT;
  }
  ArgumentArray taken;
  return Guard([&] {
    const kelmo_status status = taken.Take(arguments, argument_count);
    if (status != KELMO_OK) {
      return status;
    }
    TextSink sink(buffer, capacity);
    const bool isFound = KelmoLibs::Host::WriteFormatted(
        view->view, StringOf(key, key_size), taken.All(), taken.Count(), sink, ListOf(problems));
    GiveSize(sink.Finish(), needed);
    return kelmo_status{isFound ? KELMO_OK : KELMO_NOT_FOUND};
  });
}

kelmo_status kelmo_view_take_problems(kelmo_view* view, kelmo_problems* problems, size_t* lost) {
  if (view == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  GiveSize(view->view.TakeProblems(ListOf(problems)), lost);
  return KELMO_OK;
}

// ---- The user

kelmo_status kelmo_system_language(size_t index, char* buffer, size_t capacity, size_t* needed) {
  if (buffer == nullptr && capacity != 0) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([=]() -> kelmo_status {
    const std::vector<std::string> ids = KelmoLibs::Localize::SystemLanguages();
    if (index >= ids.size()) {
      return KELMO_NOT_FOUND;
    }
    TextSink sink(buffer, capacity);
    sink.Append(ids[index]);
    GiveSize(sink.Finish(), needed);
    return KELMO_OK;
  });
}

// NOLINTEND(readability-identifier-naming)
}  // extern "C"
