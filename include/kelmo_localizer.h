/*
 * kelmo_Mestrel_Localizer: interface texts and physical values for engineering programs.
 *
 * The one header for hosts: functions, which are valid C and C++, and two classes for values, for
 * C++11 and later. A host starts the library once, before it makes its first value, and loads a
 * file for each language. Then it shows the texts of one language:
 *
 *   Init(L".", L"de");
 *   LoadDictionary(L"LANG", L"en.txt");
 *   LoadDictionary(L"LANG", L"de.txt");
 *   UseLanguage(L"de");
 *   LANG(L"menu.file");  // "Datei"
 *
 * It makes values with units, computes with them, and prints them with as many digits as their
 * tolerances justify:
 *
 *   using KelmoLibs::Localize::Phyval::Double;
 *   Double side(1.5, 0.01, 0, 10001);          // 1.5 m, tolerance 0.01 m
 *   side = side + Double(10, 0.1, 0, L"in");   // an inch has 0.0273 m
 *   side.to_string(L',');                      // "1,77"
 *
 * docs/host_guide.md has the order of all calls, from load to unload, and says what each of them
 * invalidates. These rules hold for every function; the classes have their own rules below:
 *
 * Texts      Zero-terminated wide strings: UTF-16 on Windows (wchar_t has 16 bits), one wchar_t per
 *            character on Linux (32 bits). Two texts are equal if all their wchar_t are equal: case
 *            and blanks count. A null pointer is the empty text.
 * Ownership  The library owns every text that it returns; the host never frees it. The library
 *            keeps no pointer that a host passes to it.
 * Threads    Only one thread at a time may call the library. It has one state for the whole process
 *            and takes no lock.
 * Problems   A missing file, key or id, and a key that is declared twice, is not reported by an
 *            exception: the library appends a message to the error list (GetErrorsCount, GetError,
 *            ClearErrors), unless an equal message is in the list. Messages stay until ClearErrors.
 *            Below, "Lists" names the messages that a call may append. Problems of Init, Init0 and
 *            ExportPhyVal are not reported.
 * Exceptions std::bad_alloc if there is no memory, and the std::out_of_range of GetError. The state
 *            is then as before the call, unless the declaration says otherwise. Only hosts in C++
 *            can catch exceptions: other hosts must not pass GetError the index that throws. With
 *            Microsoft's compiler, compile the host with /EHs instead of the usual /EHsc, or put
 *            /EHs /EHc- behind it. With /EHsc the compiler assumes that C functions do not throw,
 *            and these exceptions end the host (docs/visual_studio.md).
 */
#ifndef KELMO_LOCALIZER_H
#define KELMO_LOCALIZER_H

#include <stddef.h>
#include <stdint.h>

/*
 * KELMO_LOCALIZER_API marks each function, and KELMO_LOCALIZER_MEMBER each member of the classes.
 * The classes themselves are not marked: compilers would also export the members that they
 * generate. Hosts define neither of these macros: KELMO_LOCALIZER_BUILDING, which is set while the
 * library is built (on Windows, a module-definition file then exports the functions), and
 * KELMO_LOCALIZER_STATIC, which is set for tests that link the library's object files.
 *
 * KELMO_LOCALIZER_INLINE_MEMBER, on Linux only, marks the one member that this header defines, the
 * destructor of Double.
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
 * Starts the library for a language: replaces the units by those of the table that is embedded in
 * the library's own file, then reads the unit table of the language, the file
 * <folder>\LANG/<language>-val.txt (with this slash).
 *
 * Call it before you make the first value. It invalidates every `Double` made before: its `unit`
 * dangles. The new rows have other symbols and names; docs/values.md has both tables. The rows do
 * not depend on the language or its file.
 *
 * The library stores the symbols and names of the file until it is unloaded, under the key in the
 * first line of the file. The first entry of a code stays. No function returns these symbols and
 * names yet.
 *
 * @param folder    The folder that contains LANG, usually the folder of the program.
 *                  (LoadDictionary takes the folder of the file itself.) A backslash joins it to
 *                  the rest.
 * @param language  Part of the file name, unchanged. Precondition for both pointers: they do not
 *                  point into the symbol or name of a unit, which the call destroys first.
 *
 * @return  Always 0, even if there is no such file. Without an embedded table it is 0 too, but the
 *          catalogue is empty, and no unit is found. (On Windows, do not rename the file of the
 *          library: the table is found by that name.)
 *
 * Lists    Nothing. Messages about the file go to a list that no function returns.
 * Module   On Windows each call adds a reference to the module of the library and never releases
 *          it. A host that unloads the library calls FreeLibrary once more for each of these calls.
 * Locale   The factors of the table are read under the current locale of the runtime (setlocale,
 *          uselocale). Under a locale with a decimal comma a factor ends before its point: an inch
 *          then has 0 m.
 * Throws   std::bad_alloc. The earlier rows are then gone, and the new ones are there as far as
 *          they were read.
 * Cost     Linear in the file, which is closed before the call returns.
 */
KELMO_LOCALIZER_API int32_t Init(const wchar_t* folder, const wchar_t* language);

/** Like Init, for a program without a language: the file is <folder>\lang-val.text. */
KELMO_LOCALIZER_API int32_t Init0(const wchar_t* folder);

/**
 * Writes the embedded unit table to the file C:\phyval.txt, for users, and replaces the content of
 * that file. It is UTF-8 with a byte-order mark; each line ends with CR CR LF, and one CR LF
 * follows the last line. On Linux the file is phyval.txt in the folder "C:" of the working
 * directory, if that folder exists.
 *
 * Also starts the library, like Init: it invalidates every `Double` made before.
 *
 * @return  Always 0. A file that cannot be written is not reported.
 *
 * Lists    Nothing. Module, Locale, Throws: like Init.
 */
KELMO_LOCALIZER_API int32_t ExportPhyVal(void);

/**
 * Adds the texts of a file to a dictionary, and makes this dictionary the current one for LANG. The
 * first word of the file is the id of the dictionary.
 *
 * Several files may have the same id. The first text of a key stays, even if another file has a
 * second one. The file is closed before the call returns.
 *
 * The first byte that is not UTF-8 ends the file, without a message: the characters before it in
 * its line are the last line. A file without a line (empty, or not UTF-8 from its first byte on)
 * changes nothing and is no failure.
 *
 * @param folder    Folder of the file, absolute or relative to the working directory, which is
 *                  L".". A backslash joins it to fileName, so an empty folder gives the root:
 *                  \fileName. Neither text is normalised. On Linux the path that is opened has a
 *                  slash for each backslash, and is UTF-8; messages have the joined path.
 * @param fileName  Name of the file in that folder.
 *
 * @return 0 or more  Success: the result of GetErrorsCount after the call, which includes older
 *                    messages. Only a negative result is a failure.
 *         -2         The file cannot be opened, or is not a regular file. "EL111. Dictionary file
 *                    not found" is listed; nothing else changes.
 *         -1         The loading failed (no memory). "EL111. Dictionary loading error" is listed;
 *                    everything that was read before stays (docs/messages.md).
 *
 * Lists    "EL101. Key already declared." for each key that the dictionary already had.
 * Throws   std::bad_alloc if the path or the message of the failure cannot be stored; the entries
 *          that were read stay.
 * Cost     Linear in the file. Memory during the call, beside the stored texts and one message: at
 *          most twice the bytes of the file (three times, if the system reports no size), twice the
 *          longest key as wide text, and small buffers.
 */
KELMO_LOCALIZER_API int32_t LoadDictionary(const wchar_t* folder, const wchar_t* fileName);

/**
 * Makes a dictionary the current one for LANG, until the next UseLanguage or LoadDictionary.
 *
 * @param id  Id of a loaded dictionary: the first word of its file.
 *
 * @return  0  Success.
 *         -1  No dictionary has that id: "EL112. Dictionary not found" is listed, and the current
 *             dictionary stays.
 *
 * Throws   std::bad_alloc.
 * Cost     One lookup and a copy of the id.
 */
KELMO_LOCALIZER_API int32_t UseLanguage(const wchar_t* id);

/**
 * Returns the text of `key` in the current dictionary.
 *
 * @param key  Compared exactly, with blanks and case.
 *
 * @return  Never null. Valid and unchanged until the library is unloaded, even if other files are
 *          loaded or another dictionary is selected. If the text is missing: the library's own
 *          empty text, which GetError also returns. An empty text of a dictionary has another
 *          address.
 *
 * Lists    "EL121. Dictionary not found" if no dictionary is current: before the first load, or
 *          after a load that had no memory to create its dictionary; "EL121. Key not found in
 *          dictionary" if the current dictionary does not have the key.
 * Throws   std::bad_alloc, only if a message is appended.
 * Cost     One hash lookup, linear in the length of the key; for a missing key, one more in the
 *          list of messages. A large dictionary costs cache misses. With keys that were made to
 *          collide, O(log n). Copies nothing, and allocates only to append a message.
 */
KELMO_LOCALIZER_API const wchar_t* LANG(const wchar_t* key);

/**
 * Removes all messages from the error list. Throws nothing. Cost: linear in the list but small,
 * because its memory is freed in large blocks.
 */
KELMO_LOCALIZER_API void ClearErrors(void);

/** How many messages the list has: 0 or more. Throws nothing. Constant cost. */
KELMO_LOCALIZER_API int64_t GetErrorsCount(void);

/**
 * Returns a message of the error list.
 *
 * @param index  0 to GetErrorsCount() - 1, in the order of the list. The index GetErrorsCount()
 *               throws. Every other index, also a negative one, gives the last message. If the list
 *               is empty, every index gives the library's own empty text.
 *
 * @return  Never null. Valid until the list changes (ClearErrors, or a call that appends a message)
 *          or the library is unloaded. Copy a message that you need longer.
 *
 * Throws   std::out_of_range with the text "invalid vector subscript" if `index` is
 *          GetErrorsCount() and the list is not empty. If there is no memory for that text:
 *          std::bad_alloc, or, if the library was built with Microsoft's compiler,
 *          std::out_of_range with another text.
 * Cost     Constant.
 */
KELMO_LOCALIZER_API const wchar_t* GetError(int32_t index);

#ifdef __cplusplus
} /* extern "C" */

#include <string>

/*
 * Microsoft's compiler has four runtimes: /MD, /MDd, /MT and /MTd. They differ in the size of
 * std::wstring and in the heap. If a host uses the classes with another runtime than the library
 * has, or with an unusual _ITERATOR_DEBUG_LEVEL (usual are 2 for the debug runtimes, 0 for the
 * others), the compiler rejects the first use of a class. Every host can call the functions.
 *
 * The build of the library writes its runtime to kelmo_localizer_runtime.h, and the installation
 * puts this file beside this header. Without the file, /MD is assumed, as in a release build. A
 * host that has only a copy of this header defines
 *
 *   KELMO_LOCALIZER_DEBUG_RUNTIME   if the library was built with /MDd or /MTd
 *   KELMO_LOCALIZER_STATIC_RUNTIME  if the library was built with /MT or /MTd
 *   KELMO_LOCALIZER_ANY_RUNTIME     to turn this check off
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
 * Physical values; docs/values.md has examples.
 *
 * A unit has a code: quantity * 1000 + number of the unit. 10002 is quantity 10 (length), unit 2
 * (inch). Codes below 100 and multiples of 1000 are codes of quantities, not of units.
 *
 * The units are rows of one catalogue, which the library owns. A lookup returns the first row that
 * matches. When the library is loaded, the catalogue has the rows below. Init, Init0 and
 * ExportPhyVal replace them by other rows, which differ on purpose: there is no square meter; a
 * koefficient has the factor 0 and the symbol K, so that sums, differences and conversions with it
 * are NaN; each name ends with a blank ("meter ").
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
 * Hosts construct these objects in their own memory, so the fields, their order and their types are
 * part of the binary interface. A Double has 32 bytes on all systems. A ValueType has 16 bytes and
 * two std::wstring, and the host frees the texts that members return: host and library must have
 * the same compiler, standard library and runtime (docs/abi.md). No object may outlive the library.
 * A Double with a dangling `unit` (the library was started again) may only be rounded, printed,
 * copied, assigned to and destroyed.
 *
 * Only one thread at a time, as for the functions. No member appends a message to the error list.
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
 * A row of the catalogue of units. A host may read the row of a value but must not change it. A
 * host may construct rows of its own; no lookup finds them. Rows can be copied, but not assigned.
 */
class ValueType {
 public:
  int code;            /* quantity * 1000 + unit, or the code of a quantity */
  double factor;       /* base units of the quantity in one of this unit; 0 for a quantity */
  std::wstring symbol; /* such as "m2" */
  std::wstring name;   /* such as "square meter" */

  /** Copies both texts. Precondition: neither is null; otherwise the behaviour is undefined. Throws
   *  std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(int code, double factor, const wchar_t* symbol,
                                   const wchar_t* name);

  /** Copies. Throws std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(const ValueType& other);

  /** Copies too: `other` stays unchanged. Throws std::bad_alloc. */
  KELMO_LOCALIZER_MEMBER ValueType(ValueType&& other);

  KELMO_LOCALIZER_MEMBER ~ValueType();

  /** Number of the unit: the last three digits of the code, or 0 for codes below 100. */
  KELMO_LOCALIZER_MEMBER int GetSid();

  /** Code of the quantity: code / 1000, or the code itself if it is below 100. */
  KELMO_LOCALIZER_MEMBER int GetStype();
};

/**
 * A number with tolerances and a unit.
 *
 * Operands may have different units of one quantity. The right operand is converted to the unit of
 * the left one: (factor of the right unit * right value) / factor of the left unit, in double
 * precision, in this order. The members that are marked "Checked" throw std::invalid_argument and
 * change nothing:
 *
 *   "The physical dimension of the number is not defined."  an operand has no unit, or ConvertTo
 *                                                           finds no unit with the code;
 *   "Codes of physical quantities do not match."            the quantities differ.
 *
 * The tolerance of a value is relTolerance * value + absTolerance. The sign of the value counts: a
 * negative value makes the tolerance smaller. Precondition for Return and both to_string: the
 * tolerance is positive and finite. THEY NEVER RETURN if it is 0, negative or infinite.
 *
 * No member is const: for a constant, call the member on a copy. Constructors, assignment, the
 * destructor and Return throw nothing. A member that is checked may throw std::bad_alloc instead,
 * if there is no memory for its exception. Cost: constant, and for a constructor or a result the
 * lookup of its unit in the few rows of the catalogue. Only texts and exceptions allocate memory.
 */
class Double {
 public:
  double value;        /* in the unit */
  double absTolerance; /* in the unit */
  double relTolerance; /* as a fraction of the value */

  /**
   * A row of the library's catalogue, or null for no unit. Not owned. Dangles after the next Init,
   * Init0 or ExportPhyVal, and after the library is unloaded. A host must not change the row, and
   * must not point to another row.
   */
  ValueType* unit;

  /** `unit` is the first row with `code`, or null if the catalogue has no such unit. */
  KELMO_LOCALIZER_MEMBER Double(double value, double absTolerance, double relTolerance, int code);

  /**
   * `unit` is the first unit with exactly the name or the symbol `text`, or null if there is none
   * or `text` is null. The pointer is not kept.
   */
  KELMO_LOCALIZER_MEMBER Double(double value, double absTolerance, double relTolerance,
                                const wchar_t* text);

  Double(const Double&) = default;
  KELMO_LOCALIZER_MEMBER Double& operator=(const Double& other);

  /**
   * Sets `unit` to null and frees nothing. Exported like every member. On Linux this header also
   * defines it, because a call into another module costs as much as an addition. Hosts may rely on
   * the null in the memory of a destroyed value, but compilers may remove a store into an object at
   * the end of its lifetime. So the store is volatile, and the function is not merged into callers.
   */
#if defined(_WIN32)
  KELMO_LOCALIZER_MEMBER ~Double();
#else
  KELMO_LOCALIZER_INLINE_MEMBER ~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }
#endif

  /** Sum and difference in the unit of the left operand, with its tolerances. Checked. */
  KELMO_LOCALIZER_MEMBER Double operator+(Double other);
  KELMO_LOCALIZER_MEMBER Double operator-(Double other);

  /**
   * The value multiplied or divided by k; unit and tolerances stay. Checked: the value must have a
   * unit. Division by 0 gives an infinity or NaN.
   */
  KELMO_LOCALIZER_MEMBER Double operator*(double k);
  KELMO_LOCALIZER_MEMBER Double operator/(double k);

  /**
   * Compares in the unit of the left operand, exactly: tolerances do not count. Checked. The right
   * operand is converted even if the units are the same, which may round: a value may be below or
   * above its own copy. Do not sort by these operators; docs/values.md has an order for that.
   */
  KELMO_LOCALIZER_MEMBER bool operator==(Double other);
  KELMO_LOCALIZER_MEMBER bool operator<(Double other);
  KELMO_LOCALIZER_MEMBER bool operator>(Double other);

  /**
   * This value in the unit with `code`, with the given tolerances, which are in that unit. If the
   * value already has this unit, it is returned with its OWN tolerances. Checked, also for an
   * unknown code. (A -0 that is converted becomes 0.) Precondition: `unit` is not null; otherwise
   * the behaviour is undefined.
   */
  KELMO_LOCALIZER_MEMBER Double ConvertTo(double absTolerance, double relTolerance, int code);

  /**
   * The value rounded by its tolerance; `unit` may be null. docs/values.md has the rule. Useful for
   * tolerances from 1e-9 to 1e9. For other tolerances the result may have wrong digits, or be the
   * value itself, or NaN.
   */
  KELMO_LOCALIZER_MEMBER double Return();

  /**
   * Prints the value, rounded, in fixed notation, with 0 to 9 decimals and without the unit. The
   * decimal separator is that of the user's regional settings: the call switches the locale of the
   * runtime (setlocale) in the whole process to the user's, and restores it before it returns or
   * throws (unless the runtime has no memory to do so). If the user's locale is not installed, the
   * current one applies. No other thread may use the locale of the runtime during the call. Throws
   * std::bad_alloc.
   */
  KELMO_LOCALIZER_MEMBER std::wstring to_string();

  /**
   * Prints the value, rounded, as a wide stream does in fixed notation, with 0 to 9 decimals, and
   * with `separator` in place of each L'.'. The locale of the runtime has no effect. On Linux, the
   * global C++ locale has an effect if the host has changed it: it may group digits, and have its
   * own decimal separator. Throws std::bad_alloc, and any exception that a facet of that locale
   * makes the stream throw.
   */
  KELMO_LOCALIZER_MEMBER std::wstring to_string(wchar_t separator);

 private:                                                 /* exported, but not for hosts */
  KELMO_LOCALIZER_MEMBER double T();                      /* the tolerance */
  KELMO_LOCALIZER_MEMBER double Ts(double x);             /* the tolerance * x */
  KELMO_LOCALIZER_MEMBER double Vs(double x);             /* value in a unit with the factor x */
  KELMO_LOCALIZER_MEMBER void CheckCorrect();             /* throws without a unit */
  KELMO_LOCALIZER_MEMBER void CheckCorrect(Double other); /* throws unless they fit */
};

#endif

} /* namespace Phyval */
} /* namespace Localize */
} /* namespace KelmoLibs */
#endif

#endif /* KELMO_LOCALIZER_H */
