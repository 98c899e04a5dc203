/**
 * @file
 * The C++ face of kelmo: texts and physical values in the language of the user.
 *
 *     kelmo::Loader loader;
 *     loader.add_folder("lang");
 *     const kelmo::View view(loader.finish(), {"de-AT", "de", "en"});
 *     std::puts(view.tr("menu.file").c_str());
 *     std::puts(view.tr("files", kelmo::count(5)).c_str());  // "5 Dateien"
 *
 *     kelmo::UnitsLoader units_loader;
 *     units_loader.add_file("engineering.txt");
 *     const kelmo::Units units = units_loader.finish();
 *     const kelmo::Quantity typed = units.read("12,5 bar", view);
 *     std::puts(typed.to(kilopascal).str(view).c_str());  // "1250 kPa"
 *
 * Strings are UTF-8. Texts, views and units never change: copies share them, and any number of threads
 * may use them at the same time. A loader and a list of problems are for one thread at a time. For C++17
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
#include <functional>
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

#if __has_include(<version>)
#include <version>
#endif
#if defined(__cpp_lib_format)
#include <format>
#endif

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
    throw Error(status, "kelmo: a text, path, name or id is not UTF-8");
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

class Quantity;

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

  /** A quantity, with the symbol of its unit. It is not copied. */
  Argument(
      const Quantity& quantity) noexcept;  // NOLINT(google-explicit-constructor): so tr takes it

  /** A quantity that is gone before the call is refused; in a call of tr it lives long enough. */
  Argument(Quantity&& quantity) = delete;

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

/** A number as text. Throws Error if `number` is a text or a quantity, or a field of `format` is not allowed. */
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
   * two counts of which one has become an Argument, a Count of a text or a quantity, an Argument of a
   * kelmo_argument that is not allowed, a Quantity that was moved from. */
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

// ---- Units

/** A unit, or a kind of units. The strings live as long as the units. */
struct Unit {
  std::int32_t code; /**< 1000 times the kind, and the number of the unit in it */
  std::int32_t kind; /**< number of the kind: length is 10 */
  std::int32_t
      difference; /**< of points of a scale: code of the unit of their differences; else 0 */
  double factor;  /**< number in the base unit: factor * number + offset */
  double offset;  /**< 0 but for points */
  std::string_view symbol; /**< in the language of the view, if it has one */
  std::string_view name;   /**< the same; empty if there is no name */
};

/** A unit that a program adds. The strings are copied. */
struct NewUnit {
  std::int32_t code;       /**< for hosts: the numbers 900 to 999 of a kind, and from 1000001 on */
  double factor;           /**< above 0 */
  std::string_view symbol; /**< not empty; it does not begin like a number */
  std::string_view name;   /**< may be empty */
  double offset = 0;       /**< 0 but for points */
  std::int32_t difference = 0; /**< of points: code of the unit of their differences */
};

/** Operands do not fit, or a quantity has a unit that its units do not have. */
class UnitError : public Error {
 public:
  using Error::Error;
};

/** A typed text is not a quantity. */
class ReadError : public Error {
 public:
  /** `problem` has the place and the reason. */
  ReadError(kelmo_status status, Problem problem)
      : Error(status, problem.text), problem_(std::move(problem)) {}

  /** Its code is one of KELMO_PROBLEM_NO_NUMBER to KELMO_PROBLEM_OTHER_KIND; its column is that of the
   * text, in characters, from 1. */
  const Problem& problem() const noexcept { return problem_; }

 private:
  Problem problem_;
};

namespace detail {

inline kelmo_unit empty_unit() noexcept {
  kelmo_unit raw = {};
  raw.size = sizeof raw;
  return raw;
}

inline Unit unit_of(const kelmo_unit& raw) noexcept {
  return {raw.code,         raw.kind, raw.difference, raw.factor, raw.offset, view_of(raw.symbol),
          view_of(raw.name)};
}

using SharedUnits = Shared<kelmo_units, kelmo_units_retain, kelmo_units_release>;

}  // namespace detail

/** Options of Units::read. */
struct ReadOptions {
  std::int32_t kind = 0; /**< number of the kind that is wanted; 0: that of `code`, or any */
  std::int32_t code = 0; /**< unit of a number without a unit; 0: each needs one */
  double absolute_tolerance = 0;       /**< of the result, in the unit that was typed */
  double relative_tolerance = 0;       /**< if both are 0: one unit of the last digit */
  std::optional<NumberFormat> numbers; /**< nothing: that of the view */
};

/** How a quantity is printed. */
struct PrintOptions {
  bool name = false;                   /**< the name of the unit in place of its symbol */
  bool number = false;                 /**< neither symbol nor name */
  bool fine = false;                   /**< for quantities that were converted: rounds to the power
                                          of ten at or below the tolerance, and not above it */
  bool all_digits = true;              /**< every digit, where the tolerance justifies no number of
                                          them; false: that throws UnitError */
  std::optional<NumberFormat> numbers; /**< nothing: that of the view */
};

class Quantity;

/** Sealed units. Copies share them. */
class Units {
 public:
  /** No units: there is nothing to list and no unit with a code. What reads a text throws Error. */
  Units() = default;

  /** Takes over the caller's part in `owned`. */
  explicit Units(kelmo_units* owned) noexcept : units_(owned) {}

  /** The unit with a code; nothing if there is none. Symbol and name are those of the first language of
   * the view that has them; else those of the unit itself. */
  std::optional<Unit> find(std::int32_t code, const View& view = View()) const noexcept {
    kelmo_unit raw = detail::empty_unit();
    return kelmo_units_find(handle(), view.handle(), code, &raw) == KELMO_OK
               ? std::optional(detail::unit_of(raw))
               : std::nullopt;
  }

  /** The unit with a symbol or name, by the rules of kelmo_units_find_text. `kind` 0: of any kind. Throws
   * ReadError if there is none, or more than one. */
  Unit find(std::string_view text, const View& view = View(), std::int32_t kind = 0) const {
    kelmo_unit raw = detail::empty_unit();
    Problems problems;
    const kelmo_status status = kelmo_units_find_text(handle(), view.handle(), kind, text.data(),
                                                      text.size(), &raw, problems.handle());
    throw_unless_read(status, problems);
    return detail::unit_of(raw);
  }

  /** The kinds that have units, in the order of loading. */
  std::vector<Unit> kinds(const View& view = View()) const {
    return list(kelmo_units_kind_count(handle()), [&](std::size_t index, kelmo_unit* raw) {
      return kelmo_units_kind(handle(), view.handle(), index, raw);
    });
  }

  /** The units of a kind, or all units if `kind` is 0, in the order of loading: for a combo box. */
  std::vector<Unit> of_kind(std::int32_t kind, const View& view = View()) const {
    return list(kelmo_units_count(handle(), kind), [&](std::size_t index, kelmo_unit* raw) {
      return kelmo_units_at(handle(), view.handle(), kind, index, raw);
    });
  }

  /** Converts `count` plain numbers. `results` may be `numbers`, but must not overlap them otherwise.
   * Throws UnitError if the units do not fit. */
  void convert(std::int32_t from, std::int32_t to, const double* numbers, std::size_t count,
               double* results) const {
    check(kelmo_units_convert(handle(), from, to, numbers, count, results), from, to);
  }

  /** Converts one plain number. Throws UnitError if the units do not fit. */
  double convert(double number, std::int32_t from, std::int32_t to) const {
    convert(from, to, &number, 1, &number);
    return number;
  }

  /** Reads what a user types, such as "12,5 mm". Throws ReadError with the column and the reason, and
   * UnitError for options that do not fit. See kelmo_quantity_read. */
  Quantity read(std::string_view text, const View& view = View(),
                const ReadOptions& options = {}) const;

  /** The same; a text that is not a quantity gives nothing, and is told in `problems`. */
  std::optional<Quantity> read(std::string_view text, const View& view, Problems& problems,
                               const ReadOptions& options = {}) const;

  /** For the functions of kelmo.h; null for no units. The units belong to this object. */
  kelmo_units* handle() const noexcept { return units_.get(); }

 private:
  friend class Quantity;

  template <class Get>
  static std::vector<Unit> list(std::size_t count, Get get) {
    std::vector<Unit> units;
    units.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      kelmo_unit raw = detail::empty_unit();
      detail::check_index(get(i, &raw));
      units.push_back(detail::unit_of(raw));
    }
    return units;
  }

  static void throw_unless_read(kelmo_status status, const Problems& problems) {
    if (status != KELMO_OK && !problems.empty()) {
      throw ReadError(status, problems.at(0));
    }
    if (problems.lost() != 0) {
      throw std::bad_alloc();
    }
    detail::check(status);
  }

  // Throws for a status of a read that no problem tells.
  void check_options(kelmo_status status, const ReadOptions& options) const {
    switch (status) {
      case KELMO_UNKNOWN_UNIT:
        throw UnitError(status, "kelmo: " + explained(status, options.code, options.code));
      case KELMO_DIFFERENT_KINDS:
        throw UnitError(status, "kelmo: " + described(options.code) + " is no unit of the kind " +
                                    std::to_string(options.kind));
      case KELMO_POINT_UNIT:
        throw UnitError(status, "kelmo: points of a scale have no relative tolerance");
      default:
        detail::check(status);
    }
  }

  // `mm (length)`, or the code if there is no such unit.
  std::string described(std::int32_t code) const {
    const auto unit = find(code);
    if (!unit) {
      return std::to_string(code);
    }
    for (const Unit& kind : kinds()) {
      if (kind.kind == unit->kind && !kind.name.empty()) {
        return std::string(unit->symbol) + " (" + std::string(kind.name) + ")";
      }
    }
    return std::string(unit->symbol);
  }

  // What a status of an operation with these units means.
  std::string explained(kelmo_status status, std::int32_t left, std::int32_t right) const {
    switch (status) {
      case KELMO_UNKNOWN_UNIT:
        return "there is no unit " + described(find(left) ? right : left);
      case KELMO_DIFFERENT_KINDS:
        return described(left) + " and " + described(right) + " are units of different quantities";
      case KELMO_POINT_UNIT:
        return "points of a scale have differences, but no sums, products, ratios or relative "
               "tolerances: " +
               described(left) + (left != right ? " and " + described(right) : "");
      case KELMO_CANNOT_ROUND:
        return "the tolerance of a quantity in " + described(left) +
               " justifies no number of digits: print all of them, or give another tolerance";
      default:
        return kelmo_status_name(status);
    }
  }

  // Throws for a status of an operation with two units, or with one if they are the same.
  void check(kelmo_status status, std::int32_t left, std::int32_t right) const {
    if (status == KELMO_OUT_OF_MEMORY) {
      throw std::bad_alloc();
    }
    if (status != KELMO_OK) {
      throw UnitError(status, "kelmo: " + explained(status, left, right));
    }
  }

  std::optional<kelmo_quantity> read(std::string_view text, const View& view,
                                     const ReadOptions& options, kelmo_problems* problems,
                                     kelmo_status& status) const {
    kelmo_read_options raw = {};
    raw.size = sizeof raw;
    raw.kind = options.kind;
    raw.code = options.code;
    raw.absolute_tolerance = options.absolute_tolerance;
    raw.relative_tolerance = options.relative_tolerance;
    raw.numbers = options.numbers ? &*options.numbers : nullptr;
    kelmo_quantity result = {};
    status = kelmo_quantity_read(handle(), view.handle(), text.data(), text.size(), &raw, &result,
                                 problems);
    return status == KELMO_OK ? std::optional(result) : std::nullopt;
  }

  detail::SharedUnits units_;
};

/** With which units a loader begins. */
enum class UnitsStart : std::int32_t {
  none = KELMO_UNITS_NONE,            /**< none */
  built_in = KELMO_UNITS_BUILT_IN,    /**< those of the first library before Init */
  after_init = KELMO_UNITS_AFTER_INIT /**< those of the first library after Init */
};

/** What a file of units has. */
enum class UnitsFormat : std::int32_t {
  file = KELMO_UNITS_FILE, /**< units: code, factor, offset, symbol, name, difference */
  four_fields = KELMO_UNITS_FOUR_FIELDS, /**< units, as the first library exports them */
  names = KELMO_UNITS_NAMES              /**< symbols and names in one language: de-val.txt */
};

/** Collects units, and their symbols and names in languages. The last unit with a code counts, and the
 * first name in a language.
 *
 * Functions without a list of problems throw Error if a file cannot be read, or a line or unit of it is
 * dropped; the right lines count all the same. Functions with a list append the problems; they return
 * whether the file could be read, or the unit is allowed. All throw Error for a path or name that is not
 * UTF-8, and for a loader that was moved from. */
class UnitsLoader {
 public:
  /** A loader that begins with those units. Throws std::bad_alloc. */
  explicit UnitsLoader(UnitsStart start = UnitsStart::none) {
    kelmo_units_loader* made = nullptr;
    detail::check(kelmo_units_loader_create(static_cast<std::int32_t>(start), &made));
    loader_.reset(made);
  }

  /** Adds a unit, or replaces that with its code. */
  void add(const NewUnit& unit) {
    Problems problems;
    add(unit, problems);
    throw_first(problems);
  }

  /** Adds a unit, or replaces that with its code. */
  bool add(const NewUnit& unit, Problems& problems) {
    kelmo_unit raw = detail::empty_unit();
    raw.code = unit.code;
    raw.factor = unit.factor;
    raw.offset = unit.offset;
    raw.difference = unit.difference;
    raw.symbol = {unit.symbol.data(), unit.symbol.size()};
    raw.name = {unit.name.data(), unit.name.size()};
    return add(raw, problems);
  }

  /** Names a kind of units, such as 10 for length. */
  void add_kind(std::int32_t kind, std::string_view symbol, std::string_view name) {
    kelmo_unit raw = detail::empty_unit();
    raw.code = code_of_kind(kind);
    raw.symbol = {symbol.data(), symbol.size()};
    raw.name = {name.data(), name.size()};
    Problems problems;
    add(raw, problems);
    throw_first(problems);
  }

  /** Reads a file. The path is UTF-8, on all systems. */
  void add_file(std::string_view path, UnitsFormat format = UnitsFormat::file) {
    Problems problems;
    add_file(path, problems, format);
    throw_first(problems);
  }

  /** Reads a file. */
  bool add_file(std::string_view path, Problems& problems, UnitsFormat format = UnitsFormat::file) {
    const kelmo_status status =
        kelmo_units_loader_add_file(loader_.get(), path.data(), path.size(),
                                    static_cast<std::int32_t>(format), problems.handle());
    if (status != KELMO_CANNOT_READ) {
      detail::check(status);
    }
    return status == KELMO_OK;
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  void add_file(const Path& path, UnitsFormat format = UnitsFormat::file) {
    add_file(std::string_view(detail::utf8_of(path)), format);
  }

  /** The same for a std::filesystem::path. */
  template <class Path, class = decltype(std::declval<const Path&>().u8string())>
  bool add_file(const Path& path, Problems& problems, UnitsFormat format = UnitsFormat::file) {
    return add_file(std::string_view(detail::utf8_of(path)), problems, format);
  }

  /** Reads a file in memory; `name` stands for it in problems. */
  void add_memory(std::string_view bytes, std::string_view name,
                  UnitsFormat format = UnitsFormat::file) {
    Problems problems;
    add_memory(bytes, name, problems, format);
    throw_first(problems);
  }

  /** Reads a file in memory; `name` stands for it in problems. */
  void add_memory(std::string_view bytes, std::string_view name, Problems& problems,
                  UnitsFormat format = UnitsFormat::file) {
    detail::check(kelmo_units_loader_add_memory(
        loader_.get(), bytes.data(), bytes.size(), name.data(), name.size(),
        static_cast<std::int32_t>(format), problems.handle()));
  }

  /** Seals what was collected. The loader is empty then, without units, and can collect again. Throws
   * Error if a unit is dropped. */
  Units finish() {
    Problems problems;
    Units units = finish(problems);
    throw_first(problems);
    return units;
  }

  /** The same; units that are dropped, units with the factor 0, and names of no unit are told. */
  Units finish(Problems& problems) {
    kelmo_units* made = nullptr;
    detail::check(kelmo_units_loader_finish(loader_.get(), &made, problems.handle()));
    return Units(made);
  }

 private:
  // 0, which is no code, for a number that is too large.
  static std::int32_t code_of_kind(std::int32_t kind) noexcept {
    constexpr std::int32_t first_long_kind = 100;
    constexpr std::int32_t codes_of_kind = 1000;
    constexpr std::int32_t last_kind = INT32_MAX / codes_of_kind;
    if (kind < first_long_kind) {
      return kind;
    }
    return kind <= last_kind ? kind * codes_of_kind : 0;
  }

  bool add(const kelmo_unit& raw, Problems& problems) {
    const std::size_t before = problems.size() + problems.lost();
    const kelmo_status status = kelmo_units_loader_add(loader_.get(), &raw, problems.handle());
    if (status != KELMO_INVALID_ARGUMENT || problems.size() + problems.lost() == before) {
      detail::check(status);  // what no problem tells
    }
    return status == KELMO_OK;
  }

  static void throw_first(const Problems& problems) {
    for (const Problem& problem : problems) {
      if (problem.severity == Severity::error) {
        throw Error(problem.code == KELMO_PROBLEM_CANNOT_READ_UNITS ? KELMO_CANNOT_READ
                                                                    : KELMO_INVALID_ARGUMENT,
                    problem.text);
      }
    }
    if (problems.lost() != 0) {
      throw std::bad_alloc();
    }
  }

  std::unique_ptr<kelmo_units_loader,
                  detail::Destroyer<kelmo_units_loader, kelmo_units_loader_destroy>>
      loader_;
};

// ---- Quantities

/** A physical value: a number with tolerances and a unit. It keeps its units alive.
 *
 * Arithmetic gives the bits of the class Double of the first library: the right operand is converted to
 * the unit of the left one, whose unit and tolerances the result has. Two quantities must have the same
 * units: those of one Units object and its copies. Functions throw UnitError, which names both units, for
 * operands of different kinds, for a code that the units do not have, and for arithmetic that points of a
 * scale do not have; see kelmo.h. A quantity that was moved from has no units: what needs them throws Error.
 * Threads may share a quantity as they share an int. */
class Quantity {
 public:
  /** A number in a unit. The tolerance is relative_tolerance * number + absolute_tolerance. Throws UnitError
   * if there is no such unit. */
  Quantity(Units units, double number, std::int32_t code, double absolute_tolerance = 0,
           double relative_tolerance = 0)
      : Quantity(std::move(units),
                 kelmo_quantity_of(number, absolute_tolerance, relative_tolerance, code)) {}

  /** The quantity of a struct of kelmo.h. Throws UnitError if there is no such unit. */
  Quantity(Units units, const kelmo_quantity& raw) : units_(std::move(units)), raw_(raw) {
    units_.check(units_.find(raw.code) ? KELMO_OK : KELMO_UNKNOWN_UNIT, raw.code, raw.code);
  }

  double number() const noexcept { return raw_.number; }                         /**< in its unit */
  double absolute_tolerance() const noexcept { return raw_.absolute_tolerance; } /**< in its unit */
  double relative_tolerance() const noexcept {
    return raw_.relative_tolerance;
  }                                                           /**< a part of it */
  std::int32_t code() const noexcept { return raw_.code; }    /**< of its unit */
  const Units& units() const noexcept { return units_; }      /**< what the code means */
  const kelmo_quantity& raw() const noexcept { return raw_; } /**< for the functions of kelmo.h */

  /** Its unit, with the symbol and the name in the language of the view. */
  Unit unit(const View& view = View()) const {
    const auto found = units_.find(raw_.code, view);
    units_.check(found ? KELMO_OK : KELMO_UNKNOWN_UNIT, raw_.code, raw_.code);
    return *found;
  }

  /** The same number with other tolerances. */
  Quantity with_tolerance(double absolute, double relative = 0) const {
    Quantity result = *this;
    result.raw_.absolute_tolerance = absolute;
    result.raw_.relative_tolerance = relative;
    return result;
  }

  /** The quantity in another unit. The absolute tolerance is converted too. */
  Quantity to(std::int32_t code) const {
    Quantity result = *this;
    units_.check(kelmo_quantity_convert(units_.handle(), &raw_, 1, code, &result.raw_), raw_.code,
                 code);
    return result;
  }

  /** The number rounded as its tolerance justifies. Throws UnitError if it justifies no digits. */
  double rounded() const {
    double result = 0;
    units_.check(kelmo_quantity_round(units_.handle(), &raw_, &result), raw_.code, raw_.code);
    return result;
  }

  /** The quantity as text: "12.5 mm". See kelmo_quantity_print, and PrintOptions::fine for quantities that
   * were converted. Throws UnitError for a point with a relative tolerance, and as PrintOptions::all_digits
   * says. */
  std::string str(const View& view = View(), const PrintOptions& options = {}) const {
    kelmo_print_options raw = {};
    raw.size = sizeof raw;
    raw.flags |= options.name ? KELMO_PRINT_NAME : 0;
    raw.flags |= options.number ? KELMO_PRINT_NUMBER : 0;
    raw.flags |= options.fine ? KELMO_PRINT_FINE : 0;
    raw.flags |= options.all_digits ? KELMO_PRINT_ALL_DIGITS : 0;
    raw.numbers = options.numbers ? &*options.numbers : nullptr;
    return detail::printed([&](char* buffer, std::size_t capacity, std::size_t* needed) {
      const kelmo_status status = kelmo_quantity_print(units_.handle(), view.handle(), &raw_, &raw,
                                                       buffer, capacity, needed);
      if (status != KELMO_INVALID_ARGUMENT && status != KELMO_INVALID_UTF8) {
        units_.check(status, raw_.code, raw_.code);
      }
      return status;
    });
  }

  /** The sum, in the unit of `left`. */
  friend Quantity operator+(const Quantity& left, const Quantity& right) {
    return left.combined(kelmo_quantity_add, right);
  }
  /** The difference, in the unit of `left`. */
  friend Quantity operator-(const Quantity& left, const Quantity& right) {
    return left.combined(kelmo_quantity_subtract, right);
  }
  /** Adds a quantity. */
  Quantity& operator+=(const Quantity& right) { return *this = *this + right; }
  /** Subtracts a quantity. */
  Quantity& operator-=(const Quantity& right) { return *this = *this - right; }

  /** The quantity times a plain number. The tolerances stay. */
  friend Quantity operator*(const Quantity& quantity, double factor) {
    return quantity.scaled(kelmo_quantity_multiply, factor);
  }
  /** The same. */
  friend Quantity operator*(double factor, const Quantity& quantity) { return quantity * factor; }
  /** The quantity divided by a plain number. The tolerances stay. */
  friend Quantity operator/(const Quantity& quantity, double divisor) {
    return quantity.scaled(kelmo_quantity_divide, divisor);
  }

  /** The ratio of two quantities of one kind. */
  friend double operator/(const Quantity& left, const Quantity& right) {
    left.require_same_units(right);
    double result = 0;
    left.check(kelmo_quantity_ratio(left.units_.handle(), &left.raw_, &right.raw_, &result),
               right.raw_.code);
    return result;
  }

  /** -1, 0 or 1, by the numbers in the base unit. -0 is 0; NaN is above all others, and equal to
   * itself. */
  int compare(const Quantity& other) const {
    require_same_units(other);
    std::int32_t result = 0;
    units_.check(kelmo_quantity_compare(units_.handle(), &raw_, &other.raw_, &result), raw_.code,
                 other.raw_.code);
    return result;
  }

  // clang-format off
  friend bool operator==(const Quantity& a, const Quantity& b) { return a.compare(b) == 0; } /**< by compare */
  friend bool operator!=(const Quantity& a, const Quantity& b) { return a.compare(b) != 0; } /**< by compare */
  friend bool operator<(const Quantity& a, const Quantity& b) { return a.compare(b) < 0; }   /**< by compare */
  friend bool operator>(const Quantity& a, const Quantity& b) { return a.compare(b) > 0; }   /**< by compare */
  friend bool operator<=(const Quantity& a, const Quantity& b) { return a.compare(b) <= 0; } /**< by compare */
  friend bool operator>=(const Quantity& a, const Quantity& b) { return a.compare(b) >= 0; } /**< by compare */
  // clang-format on

  /** Does not compile: there is no algebra of dimensions. */
  template <class Other, std::enable_if_t<std::is_same_v<Other, Quantity>, int> = 0>
  friend Quantity operator*(const Quantity& left, const Other& /*right*/) {
    static_assert(!std::is_same_v<Other, Quantity>,
                  "quantities have no products: there is no algebra of dimensions");
    return left;
  }

  /** A hash: equal for quantities that are equal. */
  std::size_t hash() const {
    std::uint64_t result = 0;
    units_.check(kelmo_quantity_hash(units_.handle(), &raw_, &result), raw_.code, raw_.code);
    return static_cast<std::size_t>(result);
  }

 private:
  void require_same_units(const Quantity& other) const {
    if (units_.handle() != other.units_.handle()) {
      throw UnitError(KELMO_INVALID_ARGUMENT,
                      "kelmo: the quantities have different units: use one Units object");
    }
  }

  void check(kelmo_status status, std::int32_t other) const {
    units_.check(status, raw_.code, other);
  }

  template <class Operation>
  Quantity combined(Operation operation, const Quantity& right) const {
    require_same_units(right);
    Quantity result = *this;
    units_.check(operation(units_.handle(), &raw_, &right.raw_, &result.raw_), raw_.code,
                 right.raw_.code);
    return result;
  }

  template <class Operation>
  Quantity scaled(Operation operation, double number) const {
    Quantity result = *this;
    units_.check(operation(units_.handle(), &raw_, number, &result.raw_), raw_.code, raw_.code);
    return result;
  }

  Units units_;
  kelmo_quantity raw_;
};

inline Quantity Units::read(std::string_view text, const View& view,
                            const ReadOptions& options) const {
  Problems problems;
  kelmo_status status = KELMO_OK;
  const auto raw = read(text, view, options, problems.handle(), status);
  if (problems.size() + problems.lost() == 0) {
    check_options(status, options);
  }
  throw_unless_read(status, problems);
  return {*this, *raw};
}

inline std::optional<Quantity> Units::read(std::string_view text, const View& view,
                                           Problems& problems, const ReadOptions& options) const {
  kelmo_status status = KELMO_OK;
  const std::size_t before = problems.size() + problems.lost();
  const auto raw = read(text, view, options, problems.handle(), status);
  if (problems.size() + problems.lost() == before) {
    check_options(status, options);
  }
  return raw ? std::optional(Quantity(*this, *raw)) : std::nullopt;
}

inline Argument::Argument(const Quantity& quantity) noexcept
    : raw_(kelmo_quantity_argument(quantity.units().handle(), &quantity.raw())) {}

/** The sum of a range of quantities, which is not empty, in the unit of the first one. Throws Error for an
 * empty range, and UnitError as `+` does and for points. */
template <class Range>
Quantity sum(const Range& quantities) {
  auto next = std::begin(quantities);
  const auto end = std::end(quantities);
  if (next == end) {
    throw Error(KELMO_INVALID_ARGUMENT, "kelmo::sum: there is no quantity, and so no unit");
  }
  Quantity result = *next * 1.0;  // which throws for points: they have no sum
  while (++next != end) {
    result += *next;
  }
  return result;
}

namespace detail {

/** Whether a format has a precision, which is a point with a digit or a brace behind it; a point may be
 * the fill too. */
template <class Iterator>
constexpr bool has_precision(Iterator begin, Iterator end) {
  for (; begin != end; ++begin) {
    const Iterator next = begin + 1;
    if (*begin == '.' && next != end && ((*next >= '0' && *next <= '9') || *next == '{')) {
      return true;
    }
  }
  return false;
}

}  // namespace detail

/** Writes the quantity as str does. */
template <class Stream, class = decltype(std::declval<Stream&>() << std::string())>
Stream& operator<<(Stream& stream, const Quantity& quantity) {
  stream << quantity.str();
  return stream;
}

}  // namespace kelmo

// doxygen 1.9 does not find the scope of a specialization of std.
/** @cond */
/** So that quantities may be keys of unordered containers. */
template <>
struct std::hash<kelmo::Quantity> {
  /** Equal for quantities that are equal. */
  std::size_t operator()(const kelmo::Quantity& quantity) const { return quantity.hash(); }
};

#if defined(__cpp_lib_format)
/** Formats a quantity as the text that `<<` writes: `{:>12}` has a width. */
template <>
struct std::formatter<kelmo::Quantity> : std::formatter<std::string> {
  template <class Context>
  constexpr auto parse(Context& context) {
    const auto end = std::formatter<std::string>::parse(context);
    if (kelmo::detail::has_precision(context.begin(), end)) {
      throw std::format_error("a quantity has no precision: its tolerance rounds it");
    }
    return end;
  }
  template <class Context>
  auto format(const kelmo::Quantity& quantity, Context& context) const {
    return std::formatter<std::string>::format(quantity.str(), context);
  }
};
#endif
/** @endcond */

#endif  // KELMO_KELMO_HPP
