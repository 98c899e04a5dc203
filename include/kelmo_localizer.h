/*
 * kelmo_Mestrel_Localizer: interface texts for engineering programs.
 *
 * The one header for hosts: functions for texts, valid C and C++, and behind them, for C++11 and
 * later, the rows of units. A host loads its dictionaries, selects one and asks for texts by key:
 *
 *   LoadDictionary(L"lang", L"en.txt");
 *   LoadDictionary(L"lang", L"de.txt");
 *   UseLanguage(L"de");
 *   LANG(L"menu.file");  // "Datei"
 *
 * Rules that hold for every function:
 *
 * Texts      Zero-terminated wide strings: UTF-16 code units on Windows (wchar_t has 16 bits), one
 *            wchar_t per character on Linux (32 bits). They are compared exactly: case, blanks and
 *            every code unit count; nothing is folded or trimmed. A null pointer counts as the
 *            empty text.
 * Ownership  The library owns every text that it returns; the host never frees one. The library
 *            keeps no pointer that a host passes in.
 * Threads    One thread at a time: the library holds one state for the whole process and takes no
 *            lock.
 * Problems   A file, key or id that is not found, and a key that is declared twice, is not an
 *            exception: it becomes a message in the error list (GetErrorsCount, GetError,
 *            ClearErrors), at its end, unless an equal message is there already. Messages stay
 *            until ClearErrors. Below, "lists" names the messages that a call may add.
 * Exceptions std::bad_alloc, where memory runs out, and the std::out_of_range of GetError. The
 *            state is then as before the call, except where a declaration says otherwise. A host
 *            in another language than C++ cannot catch them: it must not pass GetError the index
 *            that throws.
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
 */
#if !defined(_WIN32)
#define KELMO_LOCALIZER_API __attribute__((visibility("default")))
#define KELMO_LOCALIZER_MEMBER KELMO_LOCALIZER_API
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
 * Reads one dictionary file and makes its dictionary the current one.
 *
 * The file's first line gives the dictionary id; a file whose id is already loaded is merged into
 * that dictionary. The first text that a key is given stays, whether a second one follows in the
 * same file or in another. No file stays open after the call.
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
 * Cost     About linear in the file. Beside the stored texts and the message at hand, at most twice
 *          the file's bytes are held during the call.
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
 * Text of a key in the current dictionary.
 *
 * @param key  Compared exactly, blanks and case included.
 *
 * @return  Never null; valid and unchanged until the library is unloaded, whatever is loaded or
 *          selected later. Where the text is missing, the library's one empty text, which GetError
 *          returns as well; a stored text that is empty has an address of its own.
 *
 * Lists    "EL121. Dictionary not found" when no dictionary has the current id,
 *          "EL121. Key not found in dictionary" when the current dictionary lacks the key.
 * Throws   std::bad_alloc, and only where a message is to be listed.
 * Cost     Two lookups; when the key is found, nothing is copied or allocated.
 */
KELMO_LOCALIZER_API const wchar_t* LANG(const wchar_t* key);

/**
 * Removes every message from the error list. Throws nothing. Cost: about linear in the longest list
 * that there was; none where the list is empty.
 */
KELMO_LOCALIZER_API void ClearErrors(void);

/** Number of messages in the error list, 0 or more. Throws nothing. Constant cost. */
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
 *          GetErrorsCount() of a list that is not empty (std::bad_alloc where there is no memory
 *          for it).
 * Cost     Constant.
 */
KELMO_LOCALIZER_API const wchar_t* GetError(int32_t index);

#ifdef __cplusplus
} /* extern "C" */

#include <string>

/*
 * Units.
 *
 * A unit has a code, a signed 32-bit integer: quantity * 1000 + number of the unit. 10001 is the
 * quantity 10, length, in the unit 1, meter. Codes below 100, and those whose last three digits are
 * 000, name a quantity and no unit.
 *
 * The units are rows of one catalogue, which the library owns and looks through from the first to
 * the last: the first row that fits is the unit. From the moment that the library is loaded it
 * holds
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
 * are part of the binary interface. ValueType has 16 bytes and those of two std::wstring: host and
 * library must have the same compiler, standard library and runtime, and with Microsoft's the same
 * debug level. No object may outlive the library.
 *
 * One thread at a time, as for the functions. Nothing here adds a message to the error list.
 */
namespace KelmoLibs {
namespace Localize {
namespace Phyval {

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

  /** Both texts are copied, and must not be null. Throws std::bad_alloc. */
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

} /* namespace Phyval */
} /* namespace Localize */
} /* namespace KelmoLibs */
#endif

#endif /* KELMO_LOCALIZER_H */
