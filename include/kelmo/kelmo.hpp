/**
 * @file
 * The C++ face of kelmo: texts in the language of the user.
 *
 *     kelmo::Loader loader;
 *     loader.add_folder("lang");
 *     const kelmo::View view(loader.finish(), {"de-AT", "de", "en"});
 *     std::puts(view.tr("menu.file").c_str());
 *     std::puts(view.tr("files", kelmo::count(5)).c_str());  // "5 Dateien"
 *
 * Strings are UTF-8. Texts and views never change: copies share them, and any number of threads may
 * use them at the same time. A loader and a list of problems are for one thread at a time. For C++17
 * and later; kelmo.h has the details of what the functions do.
 *
 * Functions that are not noexcept may throw std::bad_alloc. What else they throw is in their comments:
 * kelmo::Error or std::out_of_range.
 */
#ifndef KELMO_KELMO_HPP
#define KELMO_KELMO_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kelmo.h"

namespace kelmo {

/** A file could not be read, or an argument is not allowed. */
class Error : public std::runtime_error {
 public:
  /** `status` is one of kelmo.h. */
  Error(kelmo_status status, const std::string& what) : std::runtime_error(what), status_(status) {}

  /** One of the values of kelmo.h. */
  kelmo_status status() const noexcept { return status_; }

 private:
  kelmo_status status_;
};

/** What this header needs itself. Not for hosts. */
namespace detail {

inline std::string_view view_of(const kelmo_string& text) noexcept {
  return {text.data, text.size};
}

inline void check_index(kelmo_status status) {
  if (status != KELMO_OK) {
    throw std::out_of_range("kelmo: no such index");
  }
}

inline void check(kelmo_status status) {
  if (status == KELMO_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
  if (status == KELMO_INVALID_UTF8) {
    throw Error(status, "kelmo: a path, name or id is not UTF-8");
  }
  if (status < 0) {
    throw Error(status, std::string("kelmo: ") + kelmo_status_name(status));
  }
}

/** The UTF-8 of a std::filesystem::path: a std::string, or a std::u8string since C++20. */
template <class Path>
std::string utf8_of(const Path& path) {
  const auto text = path.u8string();
  return {reinterpret_cast<const char*>(text.data()), text.size()};
}

/** The text that `print` writes: a function of (buffer, capacity, &needed). */
template <class Print>
std::string printed(Print print) {
  constexpr std::size_t usual_size = 256;
  std::array<char, usual_size> buffer;
  std::size_t needed = 0;
  check(print(buffer.data(), buffer.size(), &needed));
  if (needed < buffer.size()) {
    return {buffer.data(), needed};
  }
  std::string whole(needed, '\0');
  check(print(&whole[0], needed + 1, &needed));
  return whole;
}

/** A position among values that `get` makes from an owner and an index. */
template <class Owner, class Value, Value (*get)(const Owner*, std::size_t)>
class Iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = Value;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = Value;

  Iterator() = default;
  Iterator(const Owner* owner, std::size_t index) noexcept : owner_(owner), index_(index) {}

  Value operator*() const { return get(owner_, index_); }
  Iterator& operator++() noexcept {
    ++index_;
    return *this;
  }
  Iterator operator++(int) noexcept {
    const Iterator before = *this;
    ++index_;
    return before;
  }
  friend bool operator==(const Iterator& left, const Iterator& right) noexcept {
    return left.index_ == right.index_;
  }
  friend bool operator!=(const Iterator& left, const Iterator& right) noexcept {
    return left.index_ != right.index_;
  }

 private:
  const Owner* owner_ = nullptr;
  std::size_t index_ = 0;
};

/** A range of values that `get` makes from an owner, which it keeps alive, and an index. Its iterators
 * are valid as long as the range. */
template <class Owner, class Value, Value (*get)(const Owner*, std::size_t)>
class Range {
 public:
  using iterator = Iterator<Owner, Value, get>;
  using const_iterator = iterator;
  using value_type = Value;

  Range(Owner owner, std::size_t size) noexcept : owner_(std::move(owner)), size_(size) {}

  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  Value at(std::size_t index) const { return get(&owner_, index); }
  iterator begin() const noexcept { return {&owner_, 0}; }
  iterator end() const noexcept { return {&owner_, size_}; }

 private:
  Owner owner_;
  std::size_t size_;
};

/** Gives back a handle that has one owner. */
template <class Handle, void (*destroy)(Handle*)>
struct Destroyer {
  void operator()(Handle* handle) const noexcept { destroy(handle); }
};

/** A handle whose copies share what it stands for. */
template <class Handle, Handle* (*retain)(Handle*), void (*release)(Handle*)>
class Shared {
 public:
  Shared() = default;
  explicit Shared(Handle* owned) noexcept : handle_(owned) {}
  Shared(const Shared& other) noexcept : handle_(retain(other.handle_)) {}
  Shared(Shared&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Shared& operator=(Shared other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Shared() { release(handle_); }

  Handle* get() const noexcept { return handle_; }

 private:
  Handle* handle_ = nullptr;
};

}  // namespace detail

// ---- Problems

/** How bad a problem is. */
enum class Severity : std::int32_t {
  note = KELMO_NOTE,       /**< nothing is lost */
  warning = KELMO_WARNING, /**< probably not meant */
  error = KELMO_ERROR      /**< something is lost */
};

/** A problem as data. */
struct Problem {
  std::int32_t code;    /**< KELMO_PROBLEM_... of kelmo.h */
  Severity severity;    /**< how bad it is */
  std::uint32_t line;   /**< from 1; 0 if it is not about a line */
  std::uint32_t column; /**< in characters, from 1; 0 if it is not about a place in a line */
  std::string sentence; /**< English */
  std::string key;      /**< empty if it is not about a key; so are the next three */
  std::string language; /**< id of a language */
  std::string file;     /**< as it was named to the loader */
  std::string detail;   /**< what the sentence leaves open */
  std::string text;     /**< the whole for people, in one line: `de.txt:7:1: warning: ...` */
};

namespace detail {

inline Problem problem_at(const kelmo_problems* list, std::size_t index) {
  kelmo_problem raw = {};
  raw.size = sizeof raw;
  check_index(kelmo_problems_get(list, index, &raw));
  const auto copy = [](const kelmo_string& text) { return std::string(view_of(text)); };
  return {raw.code,
          static_cast<Severity>(raw.severity),
          raw.line,
          raw.column,
          copy(raw.sentence),
          copy(raw.key),
          copy(raw.language),
          copy(raw.file),
          copy(raw.detail),
          printed([&](char* buffer, std::size_t capacity, std::size_t* needed) {
            return kelmo_problems_print(list, index, buffer, capacity, needed);
          })};
}

}  // namespace detail

/** A list of problems, to which loaders and views append. A range of Problem. */
class Problems {
 public:
  /** A position in the list. */
  using iterator = detail::Iterator<kelmo_problems, Problem, detail::problem_at>;
  using const_iterator = iterator; /**< the list gives copies */
  using value_type = Problem;      /**< of the range */

  /** An empty list. Throws std::bad_alloc. */
  Problems() {
    kelmo_problems* made = nullptr;
    detail::check(kelmo_problems_create(&made));
    list_.reset(made);
  }

  /** The number of problems. */
  std::size_t size() const noexcept { return kelmo_problems_count(handle()); }

  /** Whether there is no problem. */
  bool empty() const noexcept { return size() == 0; }

  /** How many problems were not appended because memory was out. */
  std::size_t lost() const noexcept { return kelmo_problems_lost(handle()); }

  /** The problem at an index. Throws std::out_of_range unless it is below size(). */
  Problem at(std::size_t index) const { return *iterator(handle(), index); }

  iterator begin() const noexcept { return {handle(), 0}; }    /**< the first problem */
  iterator end() const noexcept { return {handle(), size()}; } /**< behind the last problem */

  /** Removes all problems. */
  void clear() noexcept { kelmo_problems_clear(handle()); }

  /** For the functions of kelmo.h. The list belongs to this object. */
  kelmo_problems* handle() const noexcept { return list_.get(); }

 private:
  std::unique_ptr<kelmo_problems, detail::Destroyer<kelmo_problems, kelmo_problems_destroy>> list_;
};

// ---- Texts

/** A language of texts. The strings live as long as the texts. */
struct Language {
  std::string_view id;     /**< the first word of the first line of its files */
  std::string_view name;   /**< the rest of that line, in the first file that has one. An override
                              names only a language that no other file has */
  std::size_t entry_count; /**< number of its entries */
};

/** A text and where it comes from. The strings live as long as the texts; a zero stands behind
 * `text` and `utf16`. */
struct Text {
  std::string_view text;     /**< UTF-8 */
  std::u16string_view utf16; /**< empty unless it was loaded with LoadOptions::utf16 */
  std::string_view key;      /**< of the entry; of a plural form, with its suffix */
  std::string_view language; /**< id of its language */
  std::string_view file;     /**< as it was named to the loader */
  std::uint32_t line;        /**< in that file, from 1 */
};

namespace detail {

inline kelmo_text empty_text() noexcept {
  kelmo_text raw = {};
  raw.size = sizeof raw;
  return raw;
}

inline Text text_of(const kelmo_text& raw) noexcept {
  // char16_t has the size and the values of uint16_t.
  const auto* const units = reinterpret_cast<const char16_t*>(raw.utf16);
  return {{raw.utf8, raw.utf8_size}, {units, raw.utf16_size}, view_of(raw.key),
          view_of(raw.language),     view_of(raw.file),       raw.line};
}

using SharedTexts = Shared<kelmo_texts, kelmo_texts_retain, kelmo_texts_release>;

inline Language language_at(const SharedTexts* texts, std::size_t index) {
  kelmo_language raw = {};
  raw.size = sizeof raw;
  check_index(kelmo_texts_language(texts->get(), index, &raw));
  return {view_of(raw.id), view_of(raw.name), raw.entry_count};
}

/** A language of texts by its index. */
struct LanguageOfTexts {
  SharedTexts texts;
  std::size_t language;
};

inline Text entry_at(const LanguageOfTexts* owner, std::size_t index) {
  kelmo_text raw = empty_text();
  check_index(kelmo_texts_entry(owner->texts.get(), owner->language, index, &raw));
  return text_of(raw);
}

}  // namespace detail

/** The sealed texts of a loader. Copies share them. */
class Texts {
 public:
  /** A range of Language. */
  using Languages = detail::Range<detail::SharedTexts, Language, detail::language_at>;

  /** A range of Text. */
  using Entries = detail::Range<detail::LanguageOfTexts, Text, detail::entry_at>;

  /** No texts. */
  Texts() = default;

  /** Takes over the caller's part in `owned`. */
  explicit Texts(kelmo_texts* owned) noexcept : texts_(owned) {}

  /** The languages, in the order of loading. Those that only overrides have are behind the others. The
   * range's `at` throws std::out_of_range for an index that is not below its size. */
  Languages languages() const noexcept {
    return {texts_, kelmo_texts_language_count(texts_.get())};
  }

  /** The entries of the language at an index of languages(), in the order of loading. Throws
   * std::out_of_range if there is no such language. The range's `at` throws as that of languages(). */
  Entries entries(std::size_t language) const {
    return {{texts_, language}, detail::language_at(&texts_, language).entry_count};
  }

  /** The languages that serve a user who wants to read `wanted`, the closest first: "de-AT" and then
   * "de" for "de-AT". Empty if there is none. See kelmo_texts_match_language. */
  std::vector<Language> match(std::string_view wanted) const {
    std::vector<Language> languages;
    for (;;) {
      std::size_t index = 0;
      const kelmo_status status = kelmo_texts_match_language(
          texts_.get(), wanted.data(), wanted.size(), languages.size(), &index);
      if (status == KELMO_OUT_OF_MEMORY) {
        throw std::bad_alloc();
      }
      if (status != KELMO_OK) {
        return languages;
      }
      languages.push_back(detail::language_at(&texts_, index));
    }
  }

  /** For the functions of kelmo.h; null for no texts. The texts belong to this object. */
  kelmo_texts* handle() const noexcept { return texts_.get(); }

 private:
  detail::SharedTexts texts_;
};

// ---- Loading

/** How a file is read. */
struct LoadOptions {
  bool lenient = false;     /**< skips a byte-order mark and what is not UTF-8, reads `\n` as a line
                               break, and tells each */
  bool utf16 = false;       /**< keeps each text as UTF-16 too */
  bool percent = false;     /**< the texts have placeholders `%1` to `%99` too; `%1` is `{0}` */
  bool is_override = false; /**< later files may repeat the keys without a problem */
  bool optional = false;    /**< a file or folder that does not exist is no problem */
  bool line_breaks = false; /**< reads `\n` as a line break, and does not tell it */
};

/** Collects dictionaries. Of several texts of a key the first one stays: a file that overrides texts
 * of another is added before it.
 *
 * Functions without a list of problems throw Error if a file or folder cannot be read. Functions
 * with one append the problem, and return false. A file that was read may have lost texts: then it has
 * a problem of Severity::error. All throw Error for a path or name that is not
 * UTF-8, and for a loader that was moved from; those for a std::filesystem::path also throw what its
 * u8string throws. */
class Loader {
 public:
  /** An empty loader. Throws std::bad_alloc. */
  Loader() {
    kelmo_loader* made = nullptr;
    detail::check(kelmo_loader_create(&made));
    loader_.reset(made);
  }

  /** Reads a dictionary file. The path is UTF-8, on all systems. */
  void add_file(std::string_view path, const LoadOptions& options = {}) {
    Problems problems;
    throw_unless(add_file(path, problems, options), problems);
  }

  /** Reads a dictionary file. */
  bool add_file(std::string_view path, Problems& problems, const LoadOptions& options = {}) {
    const kelmo_load_options raw = raw_options(options);
    return was_read(
        kelmo_loader_add_file(loader_.get(), path.data(), path.size(), &raw, problems.handle()));
  }

  /** Reads the files of a folder whose names end with ".txt", but not with "-val.txt", in the order
   * of the bytes of their names. If one of them cannot be read, the others are added all the same. */
  void add_folder(std::string_view path, const LoadOptions& options = {}) {
    Problems problems;
    throw_unless(add_folder(path, problems, options), problems);
  }

  /** Reads the dictionaries of a folder. */
  bool add_folder(std::string_view path, Problems& problems, const LoadOptions& options = {}) {
    const kelmo_load_options raw = raw_options(options);
    return was_read(
        kelmo_loader_add_folder(loader_.get(), path.data(), path.size(), &raw, problems.handle()));
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  void add_file(const Path& path, const LoadOptions& options = {}) {
    add_file(std::string_view(detail::utf8_of(path)), options);
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  bool add_file(const Path& path, Problems& problems, const LoadOptions& options = {}) {
    return add_file(std::string_view(detail::utf8_of(path)), problems, options);
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  void add_folder(const Path& path, const LoadOptions& options = {}) {
    add_folder(std::string_view(detail::utf8_of(path)), options);
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  bool add_folder(const Path& path, Problems& problems, const LoadOptions& options = {}) {
    return add_folder(std::string_view(detail::utf8_of(path)), problems, options);
  }

  /** Reads a dictionary from memory; `name` stands for its file in problems. The bytes are copied. */
  void add_memory(std::string_view bytes, std::string_view name, const LoadOptions& options = {}) {
    add_bytes(bytes, name, nullptr, options);
  }

  /** Reads a dictionary from memory. */
  void add_memory(std::string_view bytes, std::string_view name, Problems& problems,
                  const LoadOptions& options = {}) {
    add_bytes(bytes, name, problems.handle(), options);
  }

  /** Seals what was collected. The loader is empty then, and can collect again. */
  Texts finish() { return sealed(nullptr); }

  /** The same; texts of overrides that stand for no other text are told in `problems`. */
  Texts finish(Problems& problems) { return sealed(problems.handle()); }

 private:
  static kelmo_load_options raw_options(const LoadOptions& options) noexcept {
    kelmo_load_options raw = {};
    raw.size = sizeof raw;
    raw.flags |= options.lenient ? KELMO_LOAD_LENIENT : 0;
    raw.flags |= options.utf16 ? KELMO_LOAD_UTF16 : 0;
    raw.flags |= options.percent ? KELMO_LOAD_PERCENT : 0;
    raw.flags |= options.is_override ? KELMO_LOAD_OVERRIDE : 0;
    raw.flags |= options.optional ? KELMO_LOAD_OPTIONAL : 0;
    raw.flags |= options.line_breaks ? KELMO_LOAD_LINE_BREAKS : 0;
    return raw;
  }

  Texts sealed(kelmo_problems* problems) {
    kelmo_texts* made = nullptr;
    detail::check(kelmo_loader_finish(loader_.get(), &made, problems));
    return Texts(made);
  }

  static bool was_read(kelmo_status status) {
    if (status != KELMO_CANNOT_READ) {
      detail::check(status);
    }
    return status == KELMO_OK;
  }

  static void throw_unless(bool was_read, const Problems& problems) {
    if (was_read) {
      return;
    }
    for (const Problem& problem : problems) {
      if (problem.code == KELMO_PROBLEM_CANNOT_READ) {
        throw Error(KELMO_CANNOT_READ, problem.text);
      }
    }
    throw Error(KELMO_CANNOT_READ, kelmo_status_name(KELMO_CANNOT_READ));  // memory was out
  }

  void add_bytes(std::string_view bytes, std::string_view name, kelmo_problems* problems,
                 const LoadOptions& options) {
    const kelmo_load_options raw = raw_options(options);
    detail::check(kelmo_loader_add_memory(loader_.get(), bytes.data(), bytes.size(), name.data(),
                                          name.size(), &raw, problems));
  }

  std::unique_ptr<kelmo_loader, detail::Destroyer<kelmo_loader, kelmo_loader_destroy>> loader_;
};

// ---- Arguments

/** What fills a placeholder. Integers, floating-point numbers and strings become one by themselves;
 * strings are not copied. A bool, a character and a std::filesystem::path do not compile. */
class Argument {
 public:
  /** An integer. */
  template <class Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  Argument(Integer integer) noexcept  // NOLINT(google-explicit-constructor): so tr takes it
      : raw_(kelmo_integer_argument(static_cast<std::int64_t>(integer))) {
    static_assert(!std::is_same_v<Integer, bool>, "say what a truth value means: give a text");
    static_assert(!is_character<Integer>, "give a character as a text");
    static_assert(sizeof(Integer) <= sizeof(std::int64_t), "an integer has at most 64 bits");
    if (std::is_unsigned_v<Integer>) {
      raw_.type = KELMO_ARGUMENT_UNSIGNED;
    }
  }

  /** A number, with as many decimals as it needs. */
  template <class Number, std::enable_if_t<std::is_floating_point_v<Number>, int> = 0,
            class = void>
  Argument(Number number) noexcept  // NOLINT(google-explicit-constructor): so tr takes it
      : raw_(kelmo_number_argument(static_cast<double>(number), KELMO_SHORTEST)) {
    if (std::is_same_v<Number, float>) {
      raw_.type = KELMO_ARGUMENT_FLOAT;
    }
  }

  /** A text. */
  template <class String,
            std::enable_if_t<std::is_convertible_v<const String&, std::string_view>, int> = 0,
            class = void, class = void>
  Argument(const String& text) noexcept  // NOLINT(google-explicit-constructor): so tr takes it
      : raw_(kelmo_text_argument(nullptr)) {
    if constexpr (std::is_convertible_v<const String&, const char*>) {
      raw_ = kelmo_text_argument(text);  // null is the empty text
    } else {
      const std::string_view view = text;
      raw_.text = {view.data(), view.size()};
    }
  }

#ifdef __cpp_lib_char8_t
  /** A text of char8_t, as u8string of a path gives it since C++20. */
  template <class String,
            std::enable_if_t<std::is_convertible_v<const String&, std::u8string_view>, int> = 0,
            class = void, class = void, class = void>
  Argument(const String& text) noexcept  // NOLINT(google-explicit-constructor): so tr takes it
      : raw_(kelmo_text_argument(nullptr)) {
    if constexpr (std::is_convertible_v<const String&, const char8_t*>) {
      const char8_t* const start = text;
      raw_ = kelmo_text_argument(reinterpret_cast<const char*>(start));  // null is the empty text
    } else {
      const std::u8string_view view = text;
      raw_.text = {reinterpret_cast<const char*>(view.data()), view.size()};
    }
  }
#endif

  /** Does not compile: the UTF-8 of a path is a new string, and strings are not copied. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  Argument(const Path& /*path*/) noexcept  // NOLINT(google-explicit-constructor): for its message
      : raw_(kelmo_text_argument(nullptr)) {
    static_assert(sizeof(Path) == 0, "give a path as a text: path.u8string()");
  }

  /** An argument of kelmo.h. */
  explicit Argument(const kelmo_argument& raw) noexcept : raw_(raw) {}

  /** For the functions of kelmo.h. */
  const kelmo_argument& raw() const noexcept { return raw_; }

 protected:
  /** For the functions below. */
  kelmo_argument raw_;

 private:
  template <class Type>
  static constexpr bool is_character =
      std::is_same_v<Type, char> || std::is_same_v<Type, wchar_t> ||
      std::is_same_v<Type, char16_t> || std::is_same_v<Type, char32_t> ||
      std::is_same_v<Type, std::remove_cv_t<std::remove_reference_t<decltype(u8""[0])>>>;
};

/** A number that chooses the plural form. A call takes one at most. */
class Count : public Argument {
 public:
  /** `{count}` stands for it as well as its position. A text does compile here, but is no count: tr
   * throws Error then, and find gives nothing. */
  explicit Count(const Argument& number) noexcept : Argument(number) { raw_.is_count = 1; }

  /** The same with a name. */
  Count(std::string_view name, const Count& count) noexcept : Argument(count) {
    raw_.name = {name.data(), name.size()};
  }
};

/** A number with that many decimals, 0 to KELMO_MAX_DECIMALS. Throws Error for others. */
inline Argument number(double value, int decimals) {
  if (decimals < 0 || decimals > KELMO_MAX_DECIMALS) {
    throw Error(KELMO_INVALID_ARGUMENT, "kelmo::number: that many decimals are not possible");
  }
  return Argument(kelmo_number_argument(value, decimals));
}

/** An integer or number that chooses the plural form: `count(5)`. A text does not compile. */
template <class Number>
Count count(Number value) noexcept {
  static_assert(std::is_arithmetic_v<Number>, "a count is a number");
  return Count(Argument(value));
}

/** A number with that many decimals: 1 and 1.0 may need other forms. Throws as number does. */
inline Count count(double value, int decimals) { return Count(number(value, decimals)); }

/** An argument with a name, for `{name}`. The name is not copied. */
template <class Value>
auto arg(std::string_view name, const Value& value) noexcept {
  if constexpr (std::is_base_of_v<Count, Value>) {
    return Count(name, value);
  } else {
    kelmo_argument raw = Argument(value).raw();
    raw.name = {name.data(), name.size()};
    return Argument(raw);
  }
}

// ---- Numbers

/** How numbers are written. Its fields are those of kelmo_number_format; a new one writes "1234.5". */
struct NumberFormat : kelmo_number_format {
  /** With groups of three digits, once is_grouped is 1. */
  NumberFormat() noexcept : kelmo_number_format() {
    size = sizeof(kelmo_number_format);
    group_size = 3;
  }
};

/** The format of a language by its id, such as "de-AT"; nothing if the language is not known. */
inline std::optional<NumberFormat> number_format_of_language(std::string_view id) noexcept {
  NumberFormat format;
  return kelmo_number_format_of_language(id.data(), id.size(), &format) == KELMO_OK
             ? std::optional(format)
             : std::nullopt;
}

/** The format that the user has set in the system; nothing if the system lacks the user's settings, and
 * their language is not known or has other digits than 0 to 9. Throws std::bad_alloc. */
inline std::optional<NumberFormat> number_format_of_user() {
  NumberFormat format;
  const kelmo_status status = kelmo_number_format_of_user(&format);
  detail::check(status);
  return status == KELMO_OK ? std::optional(format) : std::nullopt;
}

/** A number as text. Throws Error if `number` is a text, or a field of `format` is not allowed. */
inline std::string print(const Argument& number, const NumberFormat& format) {
  return detail::printed([&](char* buffer, std::size_t capacity, std::size_t* needed) {
    return kelmo_number_print(&format, &number.raw(), buffer, capacity, needed);
  });
}

// ---- Views

/** What stands for the text of a key that no language has. */
enum class Missing : std::int32_t {
  key = KELMO_MISSING_KEY,         /**< the key */
  nothing = KELMO_MISSING_NOTHING, /**< the empty text */
  marked = KELMO_MISSING_MARKED    /**< the key in double brackets: `[[menu.file]]` */
};

/** Options of a view. */
struct ViewOptions {
  std::vector<std::string> languages;  /**< ids, the first choice first: nothing else is searched */
  Missing missing = Missing::key;      /**< what stands for a missing text */
  std::uint32_t problem_limit = 0;     /**< how many problems of lookups the view records */
  bool isolate = false;                /**< arguments do not change the direction around them */
  std::optional<NumberFormat> numbers; /**< nothing: that of the first language, without groups */
};

/** Texts as one user wants them. Copies share the view, which keeps its texts alive. */
class View {
 public:
  /** No texts: every key is missing, and gives the empty text. */
  View() = default;

  /** A view of `texts`. Languages that the texts do not have are left out. All of these constructors
   * throw Error for `Texts()`, an id that is not UTF-8, and a field of `numbers` that is not allowed. */
  View(const Texts& texts, const ViewOptions& options) : view_(make(texts, options, nullptr)) {}

  /** The same; such languages are told in `problems`. */
  View(const Texts& texts, const ViewOptions& options, Problems& problems)
      : view_(make(texts, options, problems.handle())) {}

  /** A view with those languages, the first choice first. */
  View(const Texts& texts, std::vector<std::string> languages)
      : View(texts, of_languages(std::move(languages))) {}

  /** The same; languages that the texts do not have are told in `problems`. */
  View(const Texts& texts, std::vector<std::string> languages, Problems& problems)
      : View(texts, of_languages(std::move(languages)), problems) {}

  /** The text of a key from the first language that has it; its placeholders stay. For a key
   * that no language has, what the options say. */
  std::string tr(std::string_view key) const {
    std::size_t size = 0;
    const char* const text = kelmo_view_text(view_.get(), key.data(), key.size(), &size);
    return {text, size};
  }

  /** The text of a key with its placeholders filled: `{0}`, `{name}` and, where the load asked for
   * it, `%1`; `{{` stands for `{`. Numbers may have a format: `{0:8.2f}`. With a count, the form for
   * that number: `tr("files", count(5))`. What cannot be filled stays as it stands, and is a problem
   * in the view's record.
   *
   * Throws nothing but std::bad_alloc for arguments that convert by themselves and for those of
   * number, count and arg. Throws Error for what only a host can make and the compiler does not see:
   * two counts of which one has become an Argument, a Count of a text, an Argument of a
   * kelmo_argument that is not allowed. */
  template <class First, class... Others>
  std::string tr(std::string_view key, const First& first, const Others&... others) const {
    static_assert((std::is_base_of_v<Count, First> + ... + std::is_base_of_v<Count, Others>) <= 1,
                  "a text has one count at most");
    const kelmo_argument arguments[] = {raw(first), raw(others)...};
    if (view_.get() == nullptr) {
      return {};
    }
    bool is_again = false;  // a long text: the first call has told its problems
    return detail::printed([&](char* buffer, std::size_t capacity, std::size_t* needed) {
      const std::optional<Problems> told =
          is_again ? std::optional<Problems>(std::in_place) : std::nullopt;
      is_again = true;
      return kelmo_view_format(view_.get(), key.data(), key.size(), arguments, std::size(arguments),
                               buffer, capacity, needed, told ? told->handle() : nullptr);
    });
  }

  /** The text of a key and where it comes from; nothing if no language has it. */
  std::optional<Text> find(std::string_view key) const { return find(key, nullptr); }

  /** The form of a text for a number. Throws std::bad_alloc if the key and the
   * count have more than 256 bytes together and memory is out. */
  std::optional<Text> find(std::string_view key, const Count& count) const {
    return find(key, &count.raw());
  }

  /** Moves what the view has recorded to `problems`: missing keys, and placeholders that could not
   * be filled. Returns how often a problem was not recorded, because of the limit or of memory. */
  std::size_t take_problems(Problems& problems) const noexcept {
    std::size_t lost = 0;
    kelmo_view_take_problems(view_.get(), problems.handle(), &lost);
    return lost;
  }

  /** The texts of the view. */
  Texts texts() const noexcept { return Texts(kelmo_texts_retain(kelmo_view_texts(view_.get()))); }

  /** For the functions of kelmo.h; null for no texts. The view belongs to this object. */
  kelmo_view* handle() const noexcept { return view_.get(); }

 private:
  static ViewOptions of_languages(std::vector<std::string> languages) {
    ViewOptions options;
    options.languages = std::move(languages);
    return options;
  }

  static kelmo_view* make(const Texts& texts, const ViewOptions& options,
                          kelmo_problems* problems) {
    std::vector<kelmo_string> languages;
    for (const std::string& id : options.languages) {
      languages.push_back({id.data(), id.size()});
    }
    kelmo_view_options raw = {};
    raw.size = sizeof raw;
    raw.flags = options.isolate ? KELMO_VIEW_ISOLATE : 0;
    raw.missing = static_cast<std::int32_t>(options.missing);
    raw.problem_limit = options.problem_limit;
    raw.languages = languages.data();
    raw.language_count = languages.size();
    raw.numbers = options.numbers ? &*options.numbers : nullptr;
    kelmo_view* made = nullptr;
    detail::check(kelmo_view_create(texts.handle(), &raw, &made, problems));
    return made;
  }

  static kelmo_argument raw(const Argument& argument) noexcept { return argument.raw(); }

  std::optional<Text> find(std::string_view key, const kelmo_argument* count) const {
    kelmo_text raw = detail::empty_text();
    const kelmo_status status = kelmo_view_find(view_.get(), key.data(), key.size(), count, &raw);
    if (status == KELMO_OUT_OF_MEMORY) {
      throw std::bad_alloc();
    }
    return status == KELMO_OK ? std::optional(detail::text_of(raw)) : std::nullopt;
  }

  detail::Shared<kelmo_view, kelmo_view_retain, kelmo_view_release> view_;
};

/** The ids of the languages in which the user wants to read, the first choice first. */
inline std::vector<std::string> system_languages() {
  std::vector<std::string> ids;
  for (;;) {
    kelmo_status status = KELMO_OK;
    std::string id = detail::printed([&](char* buffer, std::size_t capacity, std::size_t* needed) {
      status = kelmo_system_language(ids.size(), buffer, capacity, needed);
      return status;
    });
    if (status == KELMO_NOT_FOUND) {
      return ids;
    }
    ids.push_back(std::move(id));
  }
}

/** A suggestion for the languages of a view: those of `texts` that the user wants to read, the first
 * choice first ("de-AT" and then "de"), and then `fallback`, unless it is among them. */
inline std::vector<std::string> languages_for_user(const Texts& texts, std::string_view fallback) {
  std::vector<std::string> ids;
  const auto add = [&ids](std::string_view id) {
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) {
      ids.emplace_back(id);
    }
  };
  for (const std::string& wanted : system_languages()) {
    for (const Language& language : texts.match(wanted)) {
      add(language.id);
    }
  }
  add(fallback);
  return ids;
}

}  // namespace kelmo

#endif  // KELMO_KELMO_HPP
