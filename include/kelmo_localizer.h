/*
 * kelmo_Mestrel_Localizer: interface texts and physical values for engineering programs.
 *
 * The one header for hosts: functions, valid C and C++, and behind them two classes for values, for
 * C++11 and later. A host starts the library once, before its first value, and loads a file for each
 * language. Then it shows texts of one of them:
 *
 *   Init(L".", L"de");
 *   LoadDictionary(L"LANG", L"en.txt");
 *   LoadDictionary(L"LANG", L"de.txt");
 *   UseLanguage(L"de");
 *   LANG(L"menu.file");  // "Datei"
 *
 * and makes values of units, computes with them and prints them as exactly as they are known:
 *
 *   using KelmoLibs::Localize::Phyval::Double;
 *   Double side(1.5, 0.01, 0, 10001);          // 1.5 m, known to 0.01 m
 *   side = side + Double(10, 0.1, 0, L"in");   // 10 inches, of 0.0273 m each
 *   side.to_string(L',');                      // "1,77"
 *
 * docs/host_guide.md has the whole order, from load to unload, and what becomes invalid when. Rules
 * that hold for every function:
 *
 * Texts      Wide strings that end with a zero: UTF-16 on Windows (wchar_t has 16 bits), one wchar_t
 *            per character on Linux (32 bits). Two texts are equal only if every wchar_t of them is:
 *            nothing is folded or trimmed. A null pointer counts as the empty text.
 * Ownership  The library owns every text that it returns; the host never frees one. The library
 *            keeps no pointer that a host passes in.
 * Threads    One thread at a time: the library holds one state for the whole process and takes no
 *            lock.
 * Problems   A file, key or id that is not found, and a key that is declared twice, is not an
 *            exception: it becomes a message in the error list (GetErrorsCount, GetError,
 *            ClearErrors), at its end, unless an equal message is there already. Messages stay
 *            until ClearErrors. Below, "lists" names the messages that a call may add. The
 *            problems of starting (Init, Init0, ExportPhyVal) are not told.
 * Exceptions std::bad_alloc, where memory runs out, and the std::out_of_range of GetError. The
 *            state is then as before the call, except where a declaration says otherwise. A host
 *            in another language than C++ cannot catch them: it must not pass GetError the index
 *            that throws.
 *            With Microsoft's compiler, compile the host with /EHs in the place of the usual /EHsc, or
 *            with /EHs /EHc- behind it. With /EHsc that compiler assumes that C functions throw
 *            nothing, and these exceptions end the host. docs/visual_studio.md has more for such hosts.
 */
#ifndef KELMO_LOCALIZER_H
#define KELMO_LOCALIZER_H

#include <stddef.h>
#include <stdint.h>

/*
 * KELMO_LOCALIZER_API stands in front of each function, KELMO_LOCALIZER_MEMBER in front of each
 * member of the classes; not in front of a class, or compilers would export what they add to it. On
 * Windows there are three ways to see them. KELMO_LOCALIZER_BUILDING is defined while the library
 * itself is built: a definition file lets the functions out then. KELMO_LOCALIZER_STATIC is for the
 * library's own tests, which are linked with its objects. Hosts define neither.
 *
 * KELMO_LOCALIZER_INLINE_MEMBER, on Linux alone, stands in front of a member that is defined here: the
 * library exports its copy, hosts keep theirs to themselves. It is never merged into its caller, which
 * could know that nothing reads the object any more.
 */
#if !defined(_WIN32)
#define KELMO_LOCALIZER_API __attribute__((visibility("default")))
#define KELMO_LOCALIZER_MEMBER KELMO_LOCALIZER_API
#if defined(KELMO_LOCALIZER_BUILDING)
#define KELMO_LOCALIZER_INLINE_MEMBER KELMO_LOCALIZER_MEMBER __attribute__((noinline, used))
#else
#define KELMO_LOCALIZER_INLINE_MEMBER __attribute__((noinline))
#endif
#elif defined(KELMO_LOCALIZER_BUILDING)
#define KELMO_LOCALIZER_API
#define KELMO_LOCALIZER_MEMBER __declspec(dllexport)
#elif defined(KELMO_LOCALIZER_STATIC)
#define KELMO_LOCALIZER_API
#define KELMO_LOCALIZER_MEMBER
#else
#define KELMO_LOCALIZER_API __declspec(dllimport)
#define KELMO_LOCALIZER_MEMBER __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Starts the library for a language: replaces the units by those of the table that is embedded in the
 * library's own file, then reads the unit table of the language, the file
 * folder\LANG/language-val.txt.
 *
 * Call it before the first value is made. EVERY VALUE MADE BEFORE IS OUT OF DATE AFTERWARDS, as are
 * its `unit` and the texts of the unit: the rows of the catalogue are others, with other symbols and
 * names; docs/values.md has both. Which they are depends neither on the language nor on its file.
 *
 * The library keeps the file's symbols and names as long as it is loaded, under the key that the
 * file's first line gives; the first of a code stays. No function reads them yet.
 *
 * @param folder    The folder that contains LANG, usually the program's; LoadDictionary takes the folder
 *                  of the file itself. It is joined to the rest with one backslash, as there.
 * @param language  Part of the file's name, as it stands. Neither text may be one of the catalogue,
 *                  such as a unit's name.
 *
 * @return  0, always: also where there is no such file, or no table inside the library. (On Windows
 *          that happens where the library's file does not have its name: the catalogue is empty
 *          then, and no unit is found.)
 *
 * Lists    Nothing in the error list. Problems with the file go to a list that no function reads.
 * Module   On Windows each call adds a reference to the library's module that is never released: a
 *          host that unloads the library calls FreeLibrary once more for each.
 * Locale   The table's factors are read under the runtime's current locale (setlocale, uselocale):
 *          under one with a decimal comma they end in front of their point, and an inch has 0 m.
 * Throws   std::bad_alloc, where the rows of the catalogue, the path or a failure's message cannot
 *          be stored. The earlier rows are gone then, too, and the new ones there as far as they
 *          were read.
 * Cost     That of reading the file. It is opened in this call and closed at its end.
 */
KELMO_LOCALIZER_API int32_t Init(const wchar_t* folder, const wchar_t* language);

/** The same for a program that names no language: the file is folder\lang-val.text. */
KELMO_LOCALIZER_API int32_t Init0(const wchar_t* folder);

/**
 * Writes the table that the library carries to the file C:\phyval.txt, for users to look at, in the
 * place of what that file held: UTF-8 with a byte-order mark, each line ending with CR CR LF, and a
 * CR LF behind the last. On Linux that is the file phyval.txt in the folder "C:" of the working
 * directory, if there is one.
 *
 * It counts as a start, as Init: VALUES MADE BEFORE ARE OUT OF DATE AFTERWARDS.
 *
 * @return  0, always: also where the file cannot be written, which nothing tells.
 *
 * Lists    Nothing. Module, Locale: as Init. Throws: std::bad_alloc, as Init.
 */
KELMO_LOCALIZER_API int32_t ExportPhyVal(void);

/**
 * Adds the texts of a file to the dictionary whose id stands in the file's first line. LANG answers
 * from that dictionary then.
 *
 * Several files may have one id. A key keeps the text that it is given first, also where another
 * file gives it a second one. No file stays open after the call.
 *
 * Bytes that are not UTF-8 end the file where they stand, without a message: what is in front of
 * them in their line is the last line. A file without a single line (empty, or not UTF-8 from its
 * first byte on) changes nothing and is no failure.
 *
 * @param folder    Folder of the file, absolute or relative to the working directory, which is
 *                  L"."; the empty text is the root. It is joined to fileName with one backslash,
 *                  both as they stand. On Linux each backslash becomes a slash, and the path UTF-8,
 *                  only when the file is opened: messages quote the path as joined.
 * @param fileName  Name of the file in that folder.
 *
 * @return 0 or more  Success: what GetErrorsCount gives after the call, older messages included.
 *                    Only a negative result is a failure.
 *         -2         No file could be opened there, or what is there is no regular file.
 *                    "EL111. Dictionary file not found" is listed; nothing else has changed.
 *         -1         A failure (memory) cut the loading short. "EL111. Dictionary loading error" is
 *                    listed; what was read before stays loaded and current.
 *
 * Lists    "EL101. Key already declared." for each key that the dictionary had already.
 * Throws   std::bad_alloc, where not even the path or the failure's message can be stored; what was
 *          read before stays then, too.
 * Cost     Linear in the file. Beside the stored texts and the message at hand, at most twice
 *          the file's bytes are held during the call, and the longest key once more as wide text.
 */
KELMO_LOCALIZER_API int32_t LoadDictionary(const wchar_t* folder, const wchar_t* fileName);

/**
 * Selects the dictionary that LANG answers from, until the next UseLanguage or LoadDictionary.
 *
 * @param id  Id of a loaded dictionary, as the first line of its file gives it.
 *
 * @return  0  selected.
 *         -1  No dictionary has that id: "EL112. Dictionary not found" is listed and the previous
 *             selection stays.
 *
 * Throws   std::bad_alloc.
 * Cost     One lookup and a copy of the id.
 */
KELMO_LOCALIZER_API int32_t UseLanguage(const wchar_t* id);

/**
 * What a user of the current language reads in the place of `key`.
 *
 * @param key  Compared exactly, blanks and case included.
 *
 * @return  Never null; valid and unchanged until the library is unloaded, whatever is loaded or
 *          selected later. Where the text is missing, the library's one empty text, which GetError
 *          returns as well; a stored text that is empty has an address of its own.
 *
 * Lists    "EL121. Dictionary not found" before the first load, and where the last one ran out of
 *          memory before its dictionary was made;
 *          "EL121. Key not found in dictionary" where the current one has no such key.
 * Throws   std::bad_alloc, and only where a message is to be listed.
 * Cost     One lookup, whatever the size of the dictionary, and of a missing key one more in the list of
 *          messages. Nothing is copied or allocated where the key is found, or is missing and listed.
 */
KELMO_LOCALIZER_API const wchar_t* LANG(const wchar_t* key);

/**
 * Removes every message from the error list. Throws nothing. Cost: linear in the list, and little: its
 * memory is given back in large pieces.
 */
KELMO_LOCALIZER_API void ClearErrors(void);

/** How many messages are listed, 0 or more. Throws nothing. Constant cost. */
KELMO_LOCALIZER_API int64_t GetErrorsCount(void);

/**
 * One message of the error list.
 *
 * @param index  0 to GetErrorsCount() - 1, in the order of the list. GetErrorsCount() itself throws;
 *               every other index, negative ones included, gives the last message. On an empty list
 *               every index gives the library's one empty text.
 *
 * @return  Never null; valid until the list next changes (ClearErrors, or any call that lists a
 *          message) or the library is unloaded. Copy what is needed longer.
 *
 * Throws   std::out_of_range with the text "invalid vector subscript" for the index
 *          GetErrorsCount() of a list that is not empty. Where there is no memory for that text:
 *          std::bad_alloc; built with Microsoft's compiler, the same exception with another text.
 * Cost     Constant.
 */
KELMO_LOCALIZER_API const wchar_t* GetError(int32_t index);

#ifdef __cplusplus
} /* extern "C" */

#include <string>

/*
 * Microsoft's compiler has four runtimes: /MD, /MDd, /MT and /MTd. The size of std::wstring and the heap
 * depend on them. Where a host that uses the classes has another runtime than the library, or another
 * _ITERATOR_DEBUG_LEVEL than is usual with it (2 with the debug runtimes, 0 with the others), the compiler
 * refuses the first use. The functions can be called from any host.
 *
 * What the library was built with stands in kelmo_localizer_runtime.h, which its build writes, and its
 * installation puts beside this header. Without that file /MD is expected, as in a release build. A
 * host with a copy of this header alone defines, where it is true,
 *
 *   KELMO_LOCALIZER_DEBUG_RUNTIME   the library was built with /MDd or /MTd
 *   KELMO_LOCALIZER_STATIC_RUNTIME  the library was built with /MT or /MTd
 *
 * and KELMO_LOCALIZER_ANY_RUNTIME where it knows that host and library fit: then nothing is refused.
 */
#if defined(_WIN32) && defined(_MSC_VER) && !defined(KELMO_LOCALIZER_STATIC) && \
    !defined(KELMO_LOCALIZER_ANY_RUNTIME)
#if defined(__has_include)
#if __has_include("kelmo_localizer_runtime.h")
#include "kelmo_localizer_runtime.h"
#endif
#endif
#if defined(KELMO_LOCALIZER_STATIC_RUNTIME) && defined(KELMO_LOCALIZER_DEBUG_RUNTIME)
#define KELMO_LOCALIZER_RUNTIME "/MTd"
#elif defined(KELMO_LOCALIZER_STATIC_RUNTIME)
#define KELMO_LOCALIZER_RUNTIME "/MT"
#elif defined(KELMO_LOCALIZER_DEBUG_RUNTIME)
#define KELMO_LOCALIZER_RUNTIME "/MDd"
#else
#define KELMO_LOCALIZER_RUNTIME "/MD"
#endif
#if defined(_DLL) == defined(KELMO_LOCALIZER_STATIC_RUNTIME) || \
    defined(_DEBUG) != defined(KELMO_LOCALIZER_DEBUG_RUNTIME)
#define KELMO_LOCALIZER_REFUSAL \
  "compile the host with the same runtime, and define no _DEBUG that the runtime does not."
#elif defined(_ITERATOR_DEBUG_LEVEL) && \
    _ITERATOR_DEBUG_LEVEL != 2 * defined(KELMO_LOCALIZER_DEBUG_RUNTIME)
#define KELMO_LOCALIZER_REFUSAL "compile the host with the usual _ITERATOR_DEBUG_LEVEL."
#elif !defined(_DLL) && defined(_DEBUG) && !defined(KELMO_LOCALIZER_BUILDING)
#define KELMO_LOCALIZER_REFUSAL "build it with /MDd, so that the host has the same heap."
#else
#pragma detect_mismatch("kelmo_Mestrel_Localizer", KELMO_LOCALIZER_RUNTIME)
#endif
#endif

/*
 * Physical values; docs/values.md explains them by examples.
 *
 * A unit has a code, quantity * 1000 + number of the unit, as an int: 10002 is the quantity 10,
 * length, in the unit 2, inch. Codes of one or two digits, negative ones, and whole thousands are
 * those of quantities, not of units.
 *
 * The units are rows of one catalogue, which the library owns and looks through from the first to
 * the last: the first row that fits is the unit. From the moment that the library is loaded it
 * holds the rows below. Init, Init0 and ExportPhyVal put others in their place, which differ, on
 * purpose: there is no square meter then; a koefficient has the factor 0 and the symbol K, so that
 * computing with it gives NaN; and every name ends with a blank ("meter ").
 *
 *   code    factor             symbol  name
 *   10      0                  L       length         (a quantity, never found)
 *   10001   1                  U+043C  meter          (the symbol is the Cyrillic letter)
 *   10002   0.0273             in      inch           (not 0.0254)
 *   20      0                  S       area           (a quantity, never found)
 *   20001   1                  m2      square meter
 *   30001   1                  %       koefficient
 *   40      0                  angl    plane angle    (a quantity, never found)
 *   40001   1                  U+00B0  degree
 *   40002   57.29577951308232  rad     "radian "      (with the blank)
 *
 * Hosts make these objects in memory of their own, so that the fields, their order and their types
 * are part of the binary interface. Double has 32 bytes everywhere. ValueType has 16 and those of
 * two std::wstring, and texts that a member returns are freed by the host: host and library must
 * have the same compiler, standard library and runtime (docs/abi.md). No object may outlive the
 * library. A Double that outlives its row, because the library was started again, may be rounded,
 * printed, copied, assigned to and destroyed.
 *
 * One thread at a time, as for the functions. No member adds a message to the error list.
 */
namespace KelmoLibs {
namespace Localize {
namespace Phyval {

#if defined(KELMO_LOCALIZER_REFUSAL)

template <class Used>
class RefusedClass {
  static_assert(sizeof(Used) == 0,
                "The classes of kelmo_Mestrel_Localizer, built with " KELMO_LOCALIZER_RUNTIME
                ", cannot be used here: " KELMO_LOCALIZER_REFUSAL);
};

using ValueType = RefusedClass<int>;
using Double = RefusedClass<double>;

#else

/**
 * One row of the catalogue of units. A host reads the row that a value refers to, and leaves it as
 * it is. It may make rows of its own, which no lookup finds. Rows can be copied, but not assigned.
 */
class ValueType {
 public:
  int code;            /* quantity * 1000 + unit, or a quantity's */
  double factor;       /* base units of the quantity in one of this unit; 0 in rows of quantities */
  std::wstring symbol; /* as "m2" */
  std::wstring name;   /* as "square meter" */

  /** Both texts are copied. Neither may be null: that is not checked, and what happens is the C++
   *  standard library's to say. Throws std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(int code, double factor, const wchar_t* symbol,
                                   const wchar_t* name);

  /** Copies. Throws std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(const ValueType& other);

  /** Copies too, and leaves `other` as it is. Throws std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(ValueType&& other);

  KELMO_LOCALIZER_MEMBER ~ValueType();

  /** Number of the unit: the last three digits of the code; 0 for codes below 100. */
  KELMO_LOCALIZER_MEMBER int GetSid();

  /** The quantity: code / 1000; codes below 100 are one themselves. */
  KELMO_LOCALIZER_MEMBER int GetStype();
};

/**
 * A number with tolerances and a unit.
 *
 * Operands may have different units of one quantity: the right one is expressed in the unit of the
 * left one, as (right unit's factor * right value) / left unit's factor, in double precision, the
 * product first. The members below that say "checked" throw std::invalid_argument, and then no
 * operand has changed:
 *
 *   "The physical dimension of the number is not defined."  the value, or else the other one, has no
 *                                                           unit;
 *   "Codes of physical quantities do not match."            their quantities differ.
 *
 * The tolerance that a value is rounded and printed by is relTolerance * value + absTolerance. The
 * sign of the value counts: a negative one makes the tolerance smaller. It must be positive and
 * finite when the value is rounded or printed: Return and both to_string DO NOT RETURN while it is
 * 0, negative or infinite.
 *
 * No member is const: a host that holds a constant calls them on a copy. The cost of a member is
 * constant, and that of the catalogue's few rows where a unit is looked up; memory is taken for
 * texts and for what is thrown.
 */
class Double {
 public:
  double value;        /* in the unit */
  double absTolerance; /* in the unit */
  double relTolerance; /* a fraction of the value */

  /**
   * A row of the library's catalogue, or null: no unit. Not owned; valid until the next Init, Init0
   * or ExportPhyVal, or until the library is unloaded. A host leaves the row as it is, and points
   * to no other one.
   */
  ValueType* unit;

  /** A value of the unit with `code`; of none, where the catalogue has no such unit. */
  KELMO_LOCALIZER_MEMBER Double(double value, double absTolerance, double relTolerance, int code);

  /**
   * A value of the first unit whose name or symbol is `text`, compared exactly; of none, where
   * there is no such unit or `text` is null. No pointer is kept.
   */
  KELMO_LOCALIZER_MEMBER Double(double value, double absTolerance, double relTolerance,
                                const wchar_t* text);

  Double(const Double&) = default;
  KELMO_LOCALIZER_MEMBER Double& operator=(const Double& other);

  /**
   * Sets `unit` to null and frees nothing. Exported as every member. On Linux it is inline as well,
   * because a call of another module would cost as much as an addition does. The store is volatile, or a
   * compiler would drop it as one into an object that ends.
   */
#if defined(_WIN32)
  KELMO_LOCALIZER_MEMBER ~Double();
#else
  KELMO_LOCALIZER_INLINE_MEMBER ~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }
#endif

  /** Sum and difference, with the unit and the tolerances of the left operand. Checked. */
  KELMO_LOCALIZER_MEMBER Double operator+(Double other);
  KELMO_LOCALIZER_MEMBER Double operator-(Double other);

  /**
   * The value multiplied or divided, with this value's unit and unchanged tolerances. Checked, for
   * the missing unit. Division by 0 gives an infinity or NaN.
   */
  KELMO_LOCALIZER_MEMBER Double operator*(double k);
  KELMO_LOCALIZER_MEMBER Double operator/(double k);

  /**
   * Comparison in this value's unit, without a margin; tolerances have no part in it. Checked.
   * Values of one unit are converted too, which may round: a value may be below or above its own
   * copy. This is no order to sort by; docs/values.md has one.
   */
  KELMO_LOCALIZER_MEMBER bool operator==(Double other);
  KELMO_LOCALIZER_MEMBER bool operator<(Double other);
  KELMO_LOCALIZER_MEMBER bool operator>(Double other);

  /**
   * This value in the unit with `code`, with the tolerances given, which count in that unit. A
   * value that has this unit already is returned as it is: its OWN tolerances stay. Checked; but
   * the value must have a unit, and that is not.
   */
  KELMO_LOCALIZER_MEMBER Double ConvertTo(double absTolerance, double relTolerance, int code);

  /**
   * The value rounded by its tolerance; it needs no unit. docs/values.md has the rule. Meaningful
   * for tolerances from 1e-9 to 1e9. The value itself, where the tolerance is so small (some from
   * 1e-11 down, all below 1e-31) that its power of ten, in 32 bits, is not positive.
   */
  KELMO_LOCALIZER_MEMBER double Return();

  /**
   * The rounded value in fixed notation, all its digits, with 0 to 9 decimals and without the unit.
   * The decimal separator is the one that the user has chosen in the system: for that the runtime's
   * locale is switched to the user's (setlocale) in the whole process, and switched back before the call
   * ends, also by an exception. Where the user's locale is not installed, the current one counts.
   * No other thread may use the runtime's locale meanwhile. Throws std::bad_alloc.
   */
  KELMO_LOCALIZER_MEMBER std::wstring to_string();

  /**
   * The same, as a new wide stream prints it, with `separator` for each L'.'. The runtime's locale
   * has no say in it. The global C++ locale has, on Linux, if the host has changed it: digits are
   * grouped, and the decimal separator is its own, if it says so. Throws std::bad_alloc, and what a
   * facet of that locale makes the stream throw.
   */
  KELMO_LOCALIZER_MEMBER std::wstring to_string(wchar_t separator);

 private:                                     /* exported all the same; not for hosts */
  KELMO_LOCALIZER_MEMBER double T();          /* the tolerance */
  KELMO_LOCALIZER_MEMBER double Ts(double x); /* the tolerance * x */
  KELMO_LOCALIZER_MEMBER double Vs(double x); /* value in a unit with the factor x; needs a unit */
  KELMO_LOCALIZER_MEMBER void CheckCorrect(); /* that there is a unit */
  KELMO_LOCALIZER_MEMBER void CheckCorrect(Double other); /* that the two fit */
};

#endif

} /* namespace Phyval */
} /* namespace Localize */
} /* namespace KelmoLibs */
#endif

#endif /* KELMO_LOCALIZER_H */
