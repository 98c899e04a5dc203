/**
 * @file
 * kelmo: texts and physical values in the language of the user, for programs in any language that
 * calls C.
 *
 * The library has no state: everything lives in objects that the host makes. A loader reads
 * dictionary files; finishing it gives sealed texts, which never change. A view binds texts to the
 * languages of one user; every lookup takes a view.
 *
 *     kelmo_loader* loader = NULL;
 *     kelmo_texts* texts = NULL;
 *     kelmo_view* view = NULL;
 *     kelmo_string languages[] = {{"de-AT", 5}, {"de", 2}, {"en", 2}};
 *     kelmo_view_options options = {.size = sizeof options};
 *     options.languages = languages;
 *     options.language_count = 3;
 *     if (kelmo_loader_create(&loader) == KELMO_OK &&
 *         kelmo_loader_add_folder(loader, "lang", KELMO_ZERO_TERMINATED, NULL, NULL) == KELMO_OK &&
 *         kelmo_loader_finish(loader, &texts, NULL) == KELMO_OK &&
 *         kelmo_view_create(texts, &options, &view, NULL) == KELMO_OK) {
 *       puts(kelmo_view_text(view, "menu.file", KELMO_ZERO_TERMINATED, NULL));
 *     }
 *     kelmo_view_release(view);
 *     kelmo_texts_release(texts);
 *     kelmo_loader_destroy(loader);
 *
 * Rules for all functions
 *  - Strings are UTF-8. They go in as pointer and size in bytes; with the size
 *    KELMO_ZERO_TERMINATED they end with a zero. They come out with their size, and a zero stands
 *    behind them. A null pointer with the size 0 is the empty string. Keys and names of arguments
 *    are compared byte by byte: one that is not UTF-8 is never found.
 *  - Every function that can fail returns a kelmo_status; 0 is success. A status is never reused
 *    for another meaning. When a function fails, nothing has changed, and pointers that it would
 *    have set are unchanged, unless it says more.
 *  - A null pointer where none is allowed, and a struct whose size is too small, give
 *    KELMO_INVALID_ARGUMENT. Memory that is not enough gives KELMO_OUT_OF_MEMORY. No exception
 *    leaves a function, and none ends the process.
 *  - Structs but kelmo_string and kelmo_quantity begin with their size, which the caller sets
 *    (options.size = sizeof options): later versions add fields at the end, and a function uses
 *    only those that the caller has. Fields that are 0 have their default. No flags are allowed
 *    but those that the header has.
 *  - `problems` is a list that the caller owns, or null. Functions append to it what they have to
 *    tell.
 *  - Functions that write a text write at most `capacity` bytes to `buffer`, the zero behind it
 *    included, and never a part of a character. `*needed`, unless it is null, gets the size of the
 *    whole text, without the zero: the text was cut if that is not below `capacity`. `buffer` may
 *    be null if `capacity` is 0.
 *  - Texts, views and units never change once they are made: any number of threads may use them at
 *    the same time without a lock. Loaders and lists of problems are for one thread at a time.
 *  - The library prints nothing, changes no locale, and starts no thread.
 */
#ifndef KELMO_KELMO_H
#define KELMO_KELMO_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(KELMO_API) /* kelmo_runtime.h has defined it, and defines the functions */
#elif defined(KELMO_STATIC)
#define KELMO_API
#elif !defined(_WIN32)
#define KELMO_API __attribute__((visibility("default")))
#elif defined(KELMO_BUILDING)
#define KELMO_API __declspec(dllexport)
#else
#define KELMO_API __declspec(dllimport)
#endif

/* ---- The version ---- */

/** Version of this header: major * 10000 + minor * 100 + patch. The major number is in the name of
 * the library's file. */
#define KELMO_VERSION 100

/** The version of the loaded library. A host or a binding that was made for version V can use the
 * library if the major numbers are equal and the library's version is not lower than V. */
KELMO_API uint32_t kelmo_version(void);

/* ---- Status ---- */

/** The result of a function: one of the values below. */
typedef int32_t kelmo_status;

/** The values of kelmo_status. Those below 0 are failures. */
enum {
  KELMO_OK = 0,                /**< success */
  KELMO_NOT_FOUND = 1,         /**< no text has the key; no such language is known */
  KELMO_INVALID_ARGUMENT = -1, /**< null, a size or value that is not allowed */
  KELMO_OUT_OF_MEMORY = -2,    /**< the system gave no memory */
  KELMO_CANNOT_READ = -3,      /**< a file or folder; a problem has the system's reason */
  KELMO_INVALID_UTF8 = -4,     /**< a string argument is not UTF-8 */
  KELMO_UNKNOWN_UNIT = -5,     /**< the units have no such unit */
  KELMO_DIFFERENT_KINDS = -6,  /**< the units measure different quantities: bar and metre */
  KELMO_POINT_UNIT = -7,       /**< not possible with points of a scale, such as a temperature */
  KELMO_CANNOT_ROUND = -8,     /**< the tolerance justifies no number of digits */
  KELMO_AMBIGUOUS_UNIT = -9,   /**< a text fits several units, or only looks like that of one */
  KELMO_INVALID_TEXT = -10     /**< a typed text is not a number with a unit */
};

/** The name of a status, such as "KELMO_NOT_FOUND"; "unknown status" for other numbers. Never null;
 * zero-terminated; valid as long as the library is loaded. */
KELMO_API const char* kelmo_status_name(kelmo_status status);

/* ---- Strings ---- */

/** As the size of a string argument: it ends at its first zero. */
#define KELMO_ZERO_TERMINATED SIZE_MAX

/** A string that someone else owns. */
typedef struct kelmo_string {
  const char* data; /**< UTF-8; null only with the size 0, and is the empty string then */
  size_t size;      /**< in bytes, without the zero; as an argument also KELMO_ZERO_TERMINATED */
} kelmo_string;

/* ---- Problems ---- */

/** What a problem is about. The values never change. Those of 100 to 199 are in the list of the
 * first library too. */
enum {
  KELMO_PROBLEM_KEY_REPEATED = 101,     /**< an earlier text of the key stays */
  KELMO_PROBLEM_CANNOT_READ = 111,      /**< a file or folder; `detail` is the system's reason */
  KELMO_PROBLEM_UNKNOWN_LANGUAGE = 112, /**< a language of a view that no texts have */
  KELMO_PROBLEM_KEY_MISSING = 121,      /**< in all languages of a view */
  KELMO_PROBLEM_NOT_UTF8 =
      201, /**< strict: the file is read up to here; lenient: bytes are skipped */
  KELMO_PROBLEM_BYTE_ORDER_MARK =
      202, /**< strict: it belongs to the id of the language; lenient: it is skipped */
  KELMO_PROBLEM_EMPTY_FILE = 203, /**< has no line: nothing is loaded */
  KELMO_PROBLEM_CONTROL_Z =
      204, /**< on Windows, a byte 0x1A ends the text; `detail` says what is dropped */
  KELMO_PROBLEM_LINE_BREAK =
      205, /**< lenient, without KELMO_LOAD_LINE_BREAKS: `\n` in a text is read as a line break */
  KELMO_PROBLEM_NO_LANGUAGE_ID = 206, /**< the first line begins with something else: `detail` */
  KELMO_PROBLEM_EMPTY_FOLDER = 207,   /**< a folder without any dictionary */
  KELMO_PROBLEM_NO_LANGUAGE = 208,    /**< a view finds nothing; `detail` has those of the texts */
  KELMO_PROBLEM_OVERRIDES_NOTHING =
      209, /**< a text of an override changes nothing; `detail` has the plural forms of its key */
  KELMO_PROBLEM_PLACEHOLDER =
      211, /**< a placeholder cannot be filled and stays visible; `detail` says why */
  KELMO_PROBLEM_UNIT = 221, /**< a line, or a unit in code, is dropped; `detail` says why */
  KELMO_PROBLEM_UNIT_REPEATED = 222,  /**< an earlier line of the same file stays */
  KELMO_PROBLEM_UNIT_DROPPED = 223,   /**< four fields: the first library drops the line */
  KELMO_PROBLEM_UNIT_NO_FACTOR = 224, /**< the factor is 0: arithmetic and conversion give NaN */
  KELMO_PROBLEM_UNIT_DIFFERENCE =
      225, /**< a unit is dropped: that of its differences does not fit */
  KELMO_PROBLEM_NAME_OF_NO_UNIT = 226,   /**< a language names a unit that does not exist */
  KELMO_PROBLEM_CANNOT_READ_UNITS = 227, /**< a file of units; `detail` is the system's reason */
  KELMO_PROBLEM_NO_NUMBER = 231,      /**< a typed text: no number stands there. So are the next */
  KELMO_PROBLEM_DECIMAL_MARK = 232,   /**< the number has another decimal mark, or two of them */
  KELMO_PROBLEM_GROUPS = 233,         /**< its digits are not grouped as in the format */
  KELMO_PROBLEM_NUMBER_RANGE = 234,   /**< the number is too large, too small, or too long */
  KELMO_PROBLEM_NO_UNIT = 235,        /**< no unit stands behind the number */
  KELMO_PROBLEM_UNKNOWN_UNIT = 236,   /**< no unit has the text as its symbol or name */
  KELMO_PROBLEM_AMBIGUOUS_UNIT = 237, /**< `detail` has the units that fit */
  KELMO_PROBLEM_OTHER_KIND = 238 /**< the unit is one of another quantity than the wanted one */
};

/** How bad a problem is. */
enum {
  KELMO_NOTE = 0,    /**< nothing is lost */
  KELMO_WARNING = 1, /**< probably not meant */
  KELMO_ERROR = 2    /**< something is lost */
};

/** A problem as data. */
typedef struct kelmo_problem {
  uint32_t size;     /**< of this struct, set by the caller */
  int32_t code;      /**< KELMO_PROBLEM_... */
  int32_t severity;  /**< KELMO_NOTE, KELMO_WARNING, KELMO_ERROR */
  uint32_t line;     /**< from 1; 0 if the problem is not about a line */
  uint32_t column;   /**< in characters, from 1; 0 if the problem is not about a place in a line */
  uint32_t reserved; /**< 0 */
  kelmo_string sentence; /**< English; that of the first library where it has one */
  kelmo_string key;      /**< empty if the problem is not about a key; so are the next three */
  kelmo_string language; /**< id of a language */
  kelmo_string file;     /**< as it was named to the loader */
  kelmo_string detail;   /**< what the sentence leaves open */
} kelmo_problem;

/** A list of problems. */
typedef struct kelmo_problems kelmo_problems;

/** Makes an empty list. The caller destroys it. */
KELMO_API kelmo_status kelmo_problems_create(kelmo_problems** result);

/** Destroys a list. Null is allowed, and does nothing. */
KELMO_API void kelmo_problems_destroy(kelmo_problems* problems);

/** The number of problems; 0 for null. */
KELMO_API size_t kelmo_problems_count(const kelmo_problems* problems);

/** The number of problems that were not appended because memory was out; 0 for null. */
KELMO_API size_t kelmo_problems_lost(const kelmo_problems* problems);

/** Copies the problem at `index`, from 0, in the order of their discovery. KELMO_INVALID_ARGUMENT
 * for an index that the list does not have. The strings are valid until the list is cleared or
 * destroyed. */
KELMO_API kelmo_status kelmo_problems_get(const kelmo_problems* problems, size_t index,
                                          kelmo_problem* result);

/** Writes the problem at `index` for people, in English, as one line: `de.txt:7:1: warning: ...`.
 */
KELMO_API kelmo_status kelmo_problems_print(const kelmo_problems* problems, size_t index,
                                            char* buffer, size_t capacity, size_t* needed);

/** Removes all problems. Null is allowed, and does nothing. */
KELMO_API void kelmo_problems_clear(kelmo_problems* problems);

/* ---- Loading ---- */

/** How a file is read. Strict, the default, gives the texts that the first library gives. */
enum {
  KELMO_LOAD_LENIENT =
      1, /**< skips a byte-order mark and bytes that are not UTF-8, reads `\n` as a line break,
            and tells each */
  KELMO_LOAD_UTF16 = 2,       /**< keeps each text as UTF-16 too */
  KELMO_LOAD_PERCENT = 4,     /**< the texts have placeholders `%1` to `%99` too; `%1` is `{0}` */
  KELMO_LOAD_OVERRIDE = 8,    /**< the texts are meant to stand for those of files that are added
                              later: these may repeat their keys without a problem */
  KELMO_LOAD_OPTIONAL = 16,   /**< a file or folder that does not exist is no problem: KELMO_OK */
  KELMO_LOAD_LINE_BREAKS = 32 /**< reads `\n` in a text as a line break, and does not tell it */
};

/** Options of the loading functions. */
typedef struct kelmo_load_options {
  uint32_t size;  /**< of this struct, set by the caller */
  uint32_t flags; /**< KELMO_LOAD_... */
} kelmo_load_options;

/** Collects dictionaries. Files with the same id make one language; of several texts of a key the
 * first one stays. So a file that overrides texts of another is added before it. A loader copies
 * what it keeps: paths, names and bytes may change after the call. If
 * memory is out while a file is read, the entries in front of that place stay. */
typedef struct kelmo_loader kelmo_loader;

/** Makes an empty loader. The caller destroys it. */
KELMO_API kelmo_status kelmo_loader_create(kelmo_loader** result);

/** Destroys a loader, and what it has collected since it was last finished. Null is allowed, and
 * does nothing. */
KELMO_API void kelmo_loader_destroy(kelmo_loader* loader);

/** Reads a dictionary file. `options` may be null. KELMO_CANNOT_READ: there is no such regular
 * file, or the system does not let it be read; nothing is added. */
KELMO_API kelmo_status kelmo_loader_add_file(kelmo_loader* loader, const char* path,
                                             size_t path_size, const kelmo_load_options* options,
                                             kelmo_problems* problems);

/** Reads all files of a folder whose names end with ".txt", but not with "-val.txt", in the order
 * of the bytes of their names. Names that begin with a point are left out. KELMO_CANNOT_READ: the
 * folder cannot be read, or one of its files; the others are added. */
KELMO_API kelmo_status kelmo_loader_add_folder(kelmo_loader* loader, const char* path,
                                               size_t path_size, const kelmo_load_options* options,
                                               kelmo_problems* problems);

/** Reads a dictionary from memory: `bytes`, with their number or KELMO_ZERO_TERMINATED. `name`
 * stands for the file in problems. */
KELMO_API kelmo_status kelmo_loader_add_memory(kelmo_loader* loader, const void* bytes, size_t size,
                                               const char* name, size_t name_size,
                                               const kelmo_load_options* options,
                                               kelmo_problems* problems);

/* ---- Texts ---- */

/** The sealed texts of a loader. They never change. They have owners: they are destroyed when the
 * last owner releases them. */
typedef struct kelmo_texts kelmo_texts;

/** Seals what the loader has collected. The caller is the owner of the texts. The loader is empty
 * then, and can collect again.
 *
 * Tells each text that was loaded with KELMO_LOAD_OVERRIDE and changes nothing: the files without
 * that flag have its key in no language, nor plural forms of it; or they have, in its language, the
 * form `other` of its key, which every count finds before. (Of exact forms, only `.=0` and `.=1`
 * are looked for.) Cost: in proportion to those texts, with the sizes of their keys, times the
 * languages. */
KELMO_API kelmo_status kelmo_loader_finish(kelmo_loader* loader, kelmo_texts** result,
                                           kelmo_problems* problems);

/** Adds an owner, and returns `texts`. Null is allowed. Thread-safe. */
KELMO_API kelmo_texts* kelmo_texts_retain(kelmo_texts* texts);

/** Removes an owner. Null is allowed, and does nothing. Thread-safe. */
KELMO_API void kelmo_texts_release(kelmo_texts* texts);

/** A language of texts. */
typedef struct kelmo_language {
  uint32_t size;      /**< of this struct, set by the caller */
  uint32_t reserved;  /**< 0 */
  kelmo_string id;    /**< the first word of the first line of its files */
  kelmo_string name;  /**< for people: the rest of that line, in the first file that has one. An
                         override names only a language that no other file has */
  size_t entry_count; /**< number of its entries */
} kelmo_language;

/** The number of languages; 0 for null. */
KELMO_API size_t kelmo_texts_language_count(const kelmo_texts* texts);

/** The language at `index`, from 0, in the order of loading. Those that only overrides have are
 * behind the others: an override does not change the order of the languages of a program.
 * KELMO_INVALID_ARGUMENT for an index that the texts do not have. The strings live as long as the
 * texts. */
KELMO_API kelmo_status kelmo_texts_language(const kelmo_texts* texts, size_t index,
                                            kelmo_language* result);

/** Finds a language that serves a user who wants to read `wanted`, such as "de-AT". At `rank` 0 it
 * is the closest one: that with this id, or else with this id without its last part, and so on
 * ("de"). The further ranks are those behind it in the same order, so that a view can look for a
 * text in "de-AT" and then in "de". Upper and lower case are the same, and so are `-` and `_`. A
 * script is never left out: "zh-Hant" does not find "zh", nor does "zh-TW". `*index` gets its
 * index. KELMO_NOT_FOUND: there are no more. */
KELMO_API kelmo_status kelmo_texts_match_language(const kelmo_texts* texts, const char* wanted,
                                                  size_t wanted_size, size_t rank, size_t* index);

/** A text and where it comes from. The strings live as long as the texts. */
typedef struct kelmo_text {
  uint32_t size;         /**< of this struct, set by the caller */
  uint32_t line;         /**< in its file, from 1 */
  const char* utf8;      /**< zero-terminated, but may have zeroes inside */
  size_t utf8_size;      /**< in bytes */
  const uint16_t* utf16; /**< zero-terminated; null unless it was loaded with KELMO_LOAD_UTF16 */
  size_t utf16_size;     /**< in code units */
  kelmo_string language; /**< id of its language */
  kelmo_string key;      /**< the key of the entry; of a plural form, with its suffix */
  kelmo_string file;     /**< as it was named to the loader */
} kelmo_text;

/** The entry at `index`, from 0, of the language at `language`, in the order of loading.
 * KELMO_INVALID_ARGUMENT for an index that the texts do not have. */
KELMO_API kelmo_status kelmo_texts_entry(const kelmo_texts* texts, size_t language, size_t index,
                                         kelmo_text* result);

/* ---- Numbers ---- */

/** How numbers are written: "1.234,5" or "1,234.5". The texts are UTF-8 and zero-terminated. */
typedef struct kelmo_number_format {
  uint32_t size;       /**< of this struct, set by the caller */
  uint32_t is_grouped; /**< 1: with marks between groups of digits. The functions that fill the
                          struct set 0 */
  uint32_t group_size; /**< digits of the last group before the decimal mark: 3; 0 means no groups
                          at all */
  uint32_t further_group_size;  /**< of the other groups: 3, in Hindi 2; 0: as group_size */
  uint32_t minimum_first_group; /**< fewer digits than these before the first mark: no mark ("1234"
                                   in Spanish: 2) */
  uint32_t zero_digit;   /**< code point of the digit 0, behind which those of 1 to 9 stand: 0x30 */
  char decimal_mark[16]; /**< "." */
  char group_mark[16];   /**< "," */
  char minus_sign[16];   /**< "-" */
} kelmo_number_format;

/** The format of a language by its id, such as "de-AT" or "de". For an id that the table does not
 * have, the function tries the id without its last part. KELMO_NOT_FOUND: the language is not
 * known. */
KELMO_API kelmo_status kelmo_number_format_of_language(const char* id, size_t id_size,
                                                       kelmo_number_format* result);

/** The format that the user has set in the system. On Linux: that of the locale which LC_ALL,
 * LC_NUMERIC or LANG names; if the system does not have that locale, the format of its language.
 * KELMO_NOT_FOUND: that language is not known either, or has other digits than 0 to 9. Reads the
 * environment, which no other thread may change meanwhile. */
KELMO_API kelmo_status kelmo_number_format_of_user(kelmo_number_format* result);

/* ---- Arguments ---- */

/** A physical value: a number with tolerances and a unit. Its layout never changes: 32 bytes. It
 * refers to its unit by a code, so that it may be copied, stored and compared byte by byte; what
 * the code means is said by the units that each call takes. */
typedef struct kelmo_quantity {
  double number;             /**< in its unit */
  double absolute_tolerance; /**< in its unit */
  double relative_tolerance; /**< a part of `number`. The tolerance of the quantity is
                                relative_tolerance * number + absolute_tolerance */
  int32_t code;              /**< of its unit */
  uint32_t reserved;         /**< 0 */
} kelmo_quantity;

/** What an argument is. */
enum {
  KELMO_ARGUMENT_TEXT = 1,     /**< `text` */
  KELMO_ARGUMENT_INTEGER = 2,  /**< `integer` */
  KELMO_ARGUMENT_UNSIGNED = 3, /**< `integer`, taken as uint64_t */
  KELMO_ARGUMENT_NUMBER = 4,   /**< `number` */
  KELMO_ARGUMENT_FLOAT = 5,    /**< `number`, which was a float: so its shortest text is "0.1" */
  KELMO_ARGUMENT_QUANTITY = 6  /**< `quantity`, printed with the symbol of its unit */
};

/** As the decimals of a number: as many as make the shortest text that reads as the same number. */
#define KELMO_SHORTEST (-1)

/** The largest number of decimals. */
#define KELMO_MAX_DECIMALS 99

/** What fills a placeholder. The functions below make arguments. */
typedef struct kelmo_argument {
  uint32_t size;    /**< of this struct, set by the caller; the same for all arguments of a call */
  int32_t type;     /**< KELMO_ARGUMENT_... */
  int32_t is_count; /**< 1: this number chooses the plural form. At most one argument of a call */
  int32_t decimals; /**< of a number: 0 to KELMO_MAX_DECIMALS, or KELMO_SHORTEST. 1 and 1.0 may need
                       other forms */
  kelmo_string name; /**< for placeholders such as {name}; empty: only {0}, {1}, ... by position */
  kelmo_string text; /**< if that is the type */
  int64_t integer;   /**< if that is the type */
  double number;     /**< if that is the type */
  const struct kelmo_units* units; /**< if the type is a quantity: what its code means */
  const kelmo_quantity* quantity;  /**< if that is the type */
} kelmo_argument;

/** Writes a number as a placeholder without a format would. `format` null: "1234.5".
 * KELMO_INVALID_ARGUMENT if the argument is a text or a quantity. */
KELMO_API kelmo_status kelmo_number_print(const kelmo_number_format* format,
                                          const kelmo_argument* number, char* buffer,
                                          size_t capacity, size_t* needed);

/* ---- Views ---- */

/** What kelmo_view_text and kelmo_view_format give for a key that no language has. */
enum {
  KELMO_MISSING_KEY = 0,     /**< the key */
  KELMO_MISSING_NOTHING = 1, /**< the empty text */
  KELMO_MISSING_MARKED = 2   /**< the key in double brackets: `[[menu.file]]` */
};

/** Flags of a view. */
enum {
  KELMO_VIEW_ISOLATE = 1 /**< arguments stand between U+2068 and U+2069, so that their direction
                            does not change the order of the text around them */
};

/** Options of a view. */
typedef struct kelmo_view_options {
  uint32_t size;   /**< of this struct, set by the caller */
  uint32_t flags;  /**< KELMO_VIEW_... */
  int32_t missing; /**< KELMO_MISSING_... */
  uint32_t
      problem_limit; /**< how many problems of lookups the view records; 0, the default: none */
  const kelmo_string* languages; /**< ids, the first choice first: nothing else is searched */
  size_t language_count;         /**< number of `languages` */
  const kelmo_number_format*
      numbers; /**< null: that of the first language found, or else of the first id
                                         that is known; without groups */
} kelmo_view_options;

/** Texts as one user wants them: in an ordered list of languages. A view keeps its texts alive, and
 * has owners as they have. */
typedef struct kelmo_view kelmo_view;

/** Makes a view. The caller is its owner. `options` may be null; what it points to is copied. A
 * language that the texts do not have is a problem, and left out of texts; units still use it. So
 * is a view that has no language at all: it finds nothing. */
KELMO_API kelmo_status kelmo_view_create(kelmo_texts* texts, const kelmo_view_options* options,
                                         kelmo_view** result, kelmo_problems* problems);

/** Adds an owner, and returns `view`. Null is allowed. Thread-safe. */
KELMO_API kelmo_view* kelmo_view_retain(kelmo_view* view);

/** Removes an owner. Null is allowed, and does nothing. Thread-safe. */
KELMO_API void kelmo_view_release(kelmo_view* view);

/** The texts of the view; null for null. It adds no owner: they live as long as the view. */
KELMO_API kelmo_texts* kelmo_view_texts(const kelmo_view* view);

/** Returns the text of a key from the first language that has it; its placeholders stay. For a key
 * that no language has, returns what the view's options say: that may be `key` itself, which ends
 * with a zero only if the caller put one there. Never null: an argument that is not allowed gives
 * the empty text. A text lives as long as the texts, and a marked key as long as the view. A view
 * keeps the marked forms of at most 4096 keys; for more of them the result is the key. `*size`,
 * unless it is null, gets the size of the result. Thread-safe. Cost: one lookup for each language
 * up to the one that has it; a key that is found takes no memory. */
KELMO_API const char* kelmo_view_text(const kelmo_view* view, const char* key, size_t key_size,
                                      size_t* size);

/** Finds the key in the first language that has it, and tells where its text comes from. With
 * `count`, which may be null, finds the form for that number: see kelmo_view_format.
 * KELMO_NOT_FOUND: no language has it, and `result` is unchanged; the view records the key, if it
 * records any. A text that is found may be empty. Thread-safe. */
KELMO_API kelmo_status kelmo_view_find(const kelmo_view* view, const char* key, size_t key_size,
                                       const kelmo_argument* count, kelmo_text* result);

/** Writes the text of a key with its placeholders filled, also if there are no arguments.
 *
 * Placeholders are `{0}`, `{1}` and so on by position, `{name}` by name, and `%1` where the load
 * asked for it; `{count}` is the count. `{{` stands for `{`, and `}}` for `}`. A number may have a
 * format, as the C++ library fmt has them: `{0:8.2f}` is a number with two decimals in at least
 * eight characters. Its parts, all of them optional, are: fill and alignment (`<`, `>`, `^`), sign
 * (`+`, `-` or a blank), `0`, width (up to 255), `.` and decimals (up to 99), and `d`, `f`, `e` or
 * `g`. Arguments are not searched for placeholders. What cannot be filled stays as it stands, and
 * is a problem: in `problems`, or in the view's record if that is null. An argument that is a text,
 * but not UTF-8, fills no placeholder.
 *
 * If an argument is a count, each language is asked for the key with a suffix: `files.=0` for
 * exactly that number, then the plural category of the number by the rules of that language
 * (`files.zero`, `.one`, `.two`, `.few`, `.many`), then `files.other`, then `files`. The first text
 * that is found counts.
 *
 * A quantity whose units do not have its code gives KELMO_UNKNOWN_UNIT, and a point with a relative
 * tolerance KELMO_POINT_UNIT; nothing is written then.
 *
 * KELMO_NOT_FOUND: no language has the key; the buffer has what the view's options say, and the
 * missing key is a problem as above. A call with the capacity 0 only measures: it tells nothing.
 * KELMO_INVALID_ARGUMENT: also two counts, and a count that is a text or a quantity. Thread-safe;
 * `problems` is for one thread at a time. Takes memory only for keys with a suffix that are longer
 * than 256 bytes, for more than 16 arguments, and for problems. */
KELMO_API kelmo_status kelmo_view_format(const kelmo_view* view, const char* key, size_t key_size,
                                         const kelmo_argument* arguments, size_t argument_count,
                                         char* buffer, size_t capacity, size_t* needed,
                                         kelmo_problems* problems);

/** Moves the problems that the view has recorded to `problems`, each once, in the order of their
 * first time, and forgets them: missing keys, and placeholders that could not be filled. `*lost`,
 * unless it is null, gets the number of times that a problem was not recorded, because of the limit
 * or because memory was out. A null list drops the problems; one that they do not fit in counts
 * them in kelmo_problems_lost. Thread-safe; `problems` is for one thread at a time. */
KELMO_API kelmo_status kelmo_view_take_problems(kelmo_view* view, kelmo_problems* problems,
                                                size_t* lost);

/** Writes the id of a language in which the user wants to read, such as "de-AT": at `index` 0 the
 * first choice. KELMO_NOT_FOUND: there are no more. A suggestion for the languages of a view: see
 * kelmo_texts_match_language. On Linux: from LANGUAGE, LC_ALL, LC_MESSAGES and LANG; none if the
 * locale is "C" or "POSIX". An id has less than 85 bytes on Windows. On Linux it is as long as the
 * variable: an id that was cut, because `*needed` is not below `capacity`, may be another valid
 * one. */
KELMO_API kelmo_status kelmo_system_language(size_t index, char* buffer, size_t capacity,
                                             size_t* needed);

/* ---- Units ---- */

/** A code is 1000 times the number of its kind (length is 10, plane angle is 40) and the number of
 * the unit in it: 10001 is unit 1 of kind 10. Hosts have numbers and kinds of their own, which no
 * table that comes with kelmo uses: a host that adds a length takes one of 10900 to 10999, and a
 * host that adds kinds takes codes from 1000001 on. */
#define KELMO_FIRST_HOST_UNIT 900
/** The last number of a unit of a host in such a kind. */
#define KELMO_LAST_HOST_UNIT 999
/** The first number of a kind of a host. */
#define KELMO_FIRST_HOST_KIND 1000

/** With which units a loader begins. */
enum {
  KELMO_UNITS_NONE = 0,      /**< none */
  KELMO_UNITS_BUILT_IN = 1,  /**< those of the first library before Init: an inch has 0.0273 m */
  KELMO_UNITS_AFTER_INIT = 2 /**< those of the first library after Init: the factor of 30001 is 0 */
};

/** What a file has. */
enum {
  KELMO_UNITS_FILE =
      0, /**< units: code, factor, offset, symbol, name and, for points, the code of the
                           unit of their differences; one tab between two of them */
  KELMO_UNITS_FOUR_FIELDS =
      1, /**< units: code, factor, symbol and name, as ExportPhyVal writes them.
                                  What the first library drops is dropped, and told */
  KELMO_UNITS_NAMES =
      2 /**< a language unit table, such as de-val.txt: symbols and names of units in
                           one language, whose id is the first word of the first line */
};

/** In bytes, for symbols and names of units. */
#define KELMO_LONGEST_UNIT_TEXT 255

/** A unit. Its number in the base unit of its kind is factor * number + offset.
 *
 * Or a kind of units: its code is 1000 times the number of the kind, or that number below 100; it
 * has no factor, no offset and no difference. */
typedef struct kelmo_unit {
  uint32_t size; /**< of this struct, set by the caller */
  int32_t code;  /**< see KELMO_FIRST_HOST_UNIT */
  int32_t kind;  /**< number of the kind. Functions do not read it from the caller */
  int32_t
      difference; /**< 0; or, for points of a scale (temperatures in degrees Celsius), the code of
                         the unit of their differences: of another kind, with the same factor */
  double factor; /**< a normal double above 0. As a result, 30001 of the first library may have 0 */
  double offset; /**< finite; 0 unless `difference` is not 0 */
  kelmo_string
      symbol; /**< UTF-8 of at most KELMO_LONGEST_UNIT_TEXT bytes, not empty but for kinds. It has
                          no control characters, no blank at its ends, and does not begin with a
                          digit, a sign, a point or a comma: these belong to numbers */
  kelmo_string name; /**< the same, but may be empty: there is no name */
} kelmo_unit;

/** Collects units, and their symbols and names in languages. Of several units with a code the last
 * one counts, in the place of the first; but of several lines of one file the first one counts. Of
 * several names of a unit in a language the first one counts, as in the first library. A loader
 * copies what it keeps. If memory is out while a file is read, the lines in front of that place
 * stay. */
typedef struct kelmo_units_loader kelmo_units_loader;

/** Makes a loader that begins with KELMO_UNITS_NONE, KELMO_UNITS_BUILT_IN or
 * KELMO_UNITS_AFTER_INIT. The caller destroys it. KELMO_CANNOT_READ: the file of the library has
 * lost its unit table. */
KELMO_API kelmo_status kelmo_units_loader_create(int32_t start, kelmo_units_loader** result);

/** Destroys a loader, and what it has collected since it was last finished. Null is allowed, and
 * does nothing. */
KELMO_API void kelmo_units_loader_destroy(kelmo_units_loader* loader);

/** Adds a unit or a kind, or replaces the one with its code. KELMO_INVALID_ARGUMENT: a field is not
 * allowed, and a problem says why. */
KELMO_API kelmo_status kelmo_units_loader_add(kelmo_units_loader* loader, const kelmo_unit* unit,
                                              kelmo_problems* problems);

/** Reads a file. `format` is KELMO_UNITS_FILE, KELMO_UNITS_FOUR_FIELDS or KELMO_UNITS_NAMES. A line
 * that is not right is dropped, and is a problem with its number and the reason. KELMO_CANNOT_READ:
 * there is no such regular file, or the system does not let it be read; nothing is added. */
KELMO_API kelmo_status kelmo_units_loader_add_file(kelmo_units_loader* loader, const char* path,
                                                   size_t path_size, int32_t format,
                                                   kelmo_problems* problems);

/** Reads a file from memory: `bytes`, with their number or KELMO_ZERO_TERMINATED. `name` stands for
 * the file in problems. */
KELMO_API kelmo_status kelmo_units_loader_add_memory(kelmo_units_loader* loader, const void* bytes,
                                                     size_t size, const char* name,
                                                     size_t name_size, int32_t format,
                                                     kelmo_problems* problems);

/** The sealed units of a loader. They never change. They have owners: they are destroyed when the
 * last owner releases them. */
typedef struct kelmo_units kelmo_units;

/** Seals what the loader has collected. The caller is the owner of the units. The loader is empty
 * then, without units, and can collect again. Drops units of points whose unit of differences does
 * not fit, and units that are points while the first unit of their kind is not, or the reverse;
 * tells them. Tells units with the factor 0, and names of units that do not exist. */
KELMO_API kelmo_status kelmo_units_loader_finish(kelmo_units_loader* loader, kelmo_units** result,
                                                 kelmo_problems* problems);

/** Adds an owner, and returns `units`. Null is allowed. Thread-safe. */
KELMO_API kelmo_units* kelmo_units_retain(kelmo_units* units);

/** Removes an owner. Null is allowed, and does nothing. Thread-safe. */
KELMO_API void kelmo_units_release(kelmo_units* units);

/** The number of kinds that have units; 0 for null. */
KELMO_API size_t kelmo_units_kind_count(const kelmo_units* units);

/** The kind at `index`, from 0, in the order of loading. Its symbol and its name are empty if
 * nothing names it. `view` may be null: see kelmo_units_find. KELMO_INVALID_ARGUMENT for an index
 * that the units do not have. */
KELMO_API kelmo_status kelmo_units_kind(const kelmo_units* units, const kelmo_view* view,
                                        size_t index, kelmo_unit* result);

/** The number of units of a kind, or of all units if `kind` is 0; 0 for null. */
KELMO_API size_t kelmo_units_count(const kelmo_units* units, int32_t kind);

/** The unit at `index`, from 0, of those that kelmo_units_count counts, in the order of loading:
 * the entries of a combo box. `view` may be null: see kelmo_units_find. KELMO_INVALID_ARGUMENT for
 * an index that the units do not have. */
KELMO_API kelmo_status kelmo_units_at(const kelmo_units* units, const kelmo_view* view,
                                      int32_t kind, size_t index, kelmo_unit* result);

/** Finds the unit with a code. Its symbol and its name are those of the first language of the view
 * that has them; else, and if `view` is null, those of the unit itself. All ids count that the view
 * was made with, also those that its texts do not have. The strings live as long as the units.
 * KELMO_UNKNOWN_UNIT: there is no such unit. */
KELMO_API kelmo_status kelmo_units_find(const kelmo_units* units, const kelmo_view* view,
                                        int32_t code, kelmo_unit* result);

/** Finds the unit whose symbol or name is `text`. `kind` is the number of the kind that is wanted;
 * 0: any. Upper and lower case differ: mW is not MW. These rules decide, in this order:
 *  1. The languages of the view are asked one after the other, and then the units themselves. The
 *     first that has exactly this text counts. Blanks inside are the same: space, tab, U+00A0,
 *     U+2009 and U+202F.
 *  2. If none has it, they are asked again, with characters that keyboards have in place of those
 *     that they lack: m3 for a raised 3, N*m for a middle dot, and both characters for micro and
 *     ohm.
 *  3. Points of a scale count, and not their differences: 20 degrees Celsius are a temperature.
 *
 * KELMO_AMBIGUOUS_UNIT: several units are left; or none, but one that looks the same and has other
 * letters, such as a Cyrillic letter for a Latin m. KELMO_DIFFERENT_KINDS: there are only units of
 * other kinds. KELMO_UNKNOWN_UNIT: there is none. A problem tells each. KELMO_INVALID_ARGUMENT: no
 * unit has that kind; 10 is one, and 10000 is a code. KELMO_INVALID_UTF8: the text. */
KELMO_API kelmo_status kelmo_units_find_text(const kelmo_units* units, const kelmo_view* view,
                                             int32_t kind, const char* text, size_t text_size,
                                             kelmo_unit* result, kelmo_problems* problems);

/** Converts `count` plain numbers from one unit to another of the same kind. `results` may be
 * `numbers`, but must not overlap them otherwise. The results are those of kelmo_quantity_convert.
 * KELMO_UNKNOWN_UNIT, KELMO_DIFFERENT_KINDS. Thread-safe, and takes no memory. */
KELMO_API kelmo_status kelmo_units_convert(const kelmo_units* units, int32_t from, int32_t to,
                                           const double* numbers, size_t count, double* results);

/* ---- Quantities ----
 *
 * Arithmetic and conversion give the bits that the class Double of the first library gives: the
 * right operand becomes factor * number / factor of the left unit. A result has the unit and the
 * tolerances of the left operand. There is no algebra of dimensions: metre times metre is refused.
 *
 * A unit of points names a unit of another kind for their differences. A point minus a point is a
 * difference; a point plus or minus a difference is a point, and stands on the left. All other
 * arithmetic of points, and every point with a relative tolerance, gives KELMO_POINT_UNIT.
 *
 * `result` may be an operand. A code that the units do not have gives KELMO_UNKNOWN_UNIT, and a
 * `reserved` that is not 0 gives KELMO_INVALID_ARGUMENT. Numbers and tolerances may be any double:
 * infinity and NaN go through, if the program has floating-point exceptions masked, as C has them. All
 * functions are thread-safe, and take no memory but for problems.
 */

/** Makes a quantity. */
static inline kelmo_quantity kelmo_quantity_of(double number, double absolute_tolerance,
                                               double relative_tolerance, int32_t code) {
  kelmo_quantity quantity;
  quantity.number = number;
  quantity.absolute_tolerance = absolute_tolerance;
  quantity.relative_tolerance = relative_tolerance;
  quantity.code = code;
  quantity.reserved = 0;
  return quantity;
}

/** left + right. KELMO_DIFFERENT_KINDS, KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_add(const kelmo_units* units, const kelmo_quantity* left,
                                          const kelmo_quantity* right, kelmo_quantity* result);

/** left - right. KELMO_DIFFERENT_KINDS, KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_subtract(const kelmo_units* units, const kelmo_quantity* left,
                                               const kelmo_quantity* right, kelmo_quantity* result);

/** quantity * factor. The tolerances stay. KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_multiply(const kelmo_units* units,
                                               const kelmo_quantity* quantity, double factor,
                                               kelmo_quantity* result);

/** quantity / divisor. The tolerances stay. The divisor 0 gives infinity or NaN. KELMO_POINT_UNIT.
 */
KELMO_API kelmo_status kelmo_quantity_divide(const kelmo_units* units,
                                             const kelmo_quantity* quantity, double divisor,
                                             kelmo_quantity* result);

/** left / right, a plain number. KELMO_DIFFERENT_KINDS, KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_ratio(const kelmo_units* units, const kelmo_quantity* left,
                                            const kelmo_quantity* right, double* result);

/** The sum of at least one quantity, none of them a point, added one after the other. It has the
 * unit and the tolerances of the first one. KELMO_DIFFERENT_KINDS, KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_sum(const kelmo_units* units,
                                          const kelmo_quantity* quantities, size_t count,
                                          kelmo_quantity* result);

/** Compares two quantities by their numbers in the base unit, each rounded once. `*result` becomes
 * -1, 0 or 1. -0 is 0; NaN is above all others, and equal to itself: so every algorithm can sort.
 * Tolerances play no part. KELMO_DIFFERENT_KINDS. */
KELMO_API kelmo_status kelmo_quantity_compare(const kelmo_units* units, const kelmo_quantity* left,
                                              const kelmo_quantity* right, int32_t* result);

/** A hash. It is equal for quantities that kelmo_quantity_compare finds equal. Do not store it: a
 * later version may have another. */
KELMO_API kelmo_status kelmo_quantity_hash(const kelmo_units* units, const kelmo_quantity* quantity,
                                           uint64_t* result);

/** Converts `count` quantities to the unit `code`. The absolute tolerance is converted by the
 * factors alone; the relative one stays. A quantity that has this unit already stays as it is.
 * `results` may be `quantities`, but must not overlap them otherwise. KELMO_DIFFERENT_KINDS,
 * KELMO_POINT_UNIT: nothing has changed, whichever quantity it is. */
KELMO_API kelmo_status kelmo_quantity_convert(const kelmo_units* units,
                                              const kelmo_quantity* quantities, size_t count,
                                              int32_t code, kelmo_quantity* results);

/** The number that kelmo_quantity_print prints. KELMO_CANNOT_ROUND, KELMO_POINT_UNIT. */
KELMO_API kelmo_status kelmo_quantity_round(const kelmo_units* units,
                                            const kelmo_quantity* quantity, double* result);

/** How a quantity is printed. */
enum {
  KELMO_PRINT_NAME = 1,       /**< the name of the unit in place of its symbol, if it has one */
  KELMO_PRINT_NUMBER = 2,     /**< neither symbol nor name */
  KELMO_PRINT_ALL_DIGITS = 4, /**< every digit, where the tolerance justifies no number of them */
  KELMO_PRINT_FINE = 8 /**< rounds to the power of ten at or below the tolerance, and not above it:
                          for quantities that were converted */
};

/** Options of kelmo_quantity_print. */
typedef struct kelmo_print_options {
  uint32_t size;                      /**< of this struct, set by the caller */
  uint32_t flags;                     /**< KELMO_PRINT_... */
  const kelmo_number_format* numbers; /**< null: that of the view; without a view, "1234.5" */
} kelmo_print_options;

/** Writes a quantity with the digits that its tolerance justifies: 1234.5678 mm with the tolerance
 * 0.01 is "1234.57 mm". They are the digits that Double::to_string gives; docs/values.md has the
 * rule. A no-break space (U+00A0) stands in front of the symbol, but not in front of the signs for
 * degree, minute and second of an angle. `view`, which may be null, chooses the symbol and the
 * format of numbers; so may `options` be null.
 *
 * That rule rounds to the next power of ten above the tolerance. So a tolerance that is no power of
 * ten costs up to one digit: 1 inch, known to 1 inch, is 25.4 mm and prints as "0 mm". Give
 * KELMO_PRINT_FINE for quantities that were converted: then it is "30 mm".
 *
 * KELMO_CANNOT_ROUND: the tolerance is 0, negative, infinite or NaN; or it is below 1e-9 or above
 * 1e9, where the scale of the first library overflows; or its product with the number does. With
 * KELMO_PRINT_ALL_DIGITS, the shortest text that reads as the same number stands there instead.
 * Infinity and NaN need no tolerance. A negative number with a relative tolerance only has a
 * negative tolerance. KELMO_POINT_UNIT: a point with a relative tolerance. */
KELMO_API kelmo_status kelmo_quantity_print(const kelmo_units* units, const kelmo_view* view,
                                            const kelmo_quantity* quantity,
                                            const kelmo_print_options* options, char* buffer,
                                            size_t capacity, size_t* needed);

/** Options of kelmo_quantity_read. */
typedef struct kelmo_read_options {
  uint32_t size;     /**< of this struct, set by the caller */
  int32_t kind;      /**< number of the kind that is wanted, such as 10; 0: any */
  int32_t code;      /**< unit of a number that has no unit, and with `kind` 0 the kind that is
                                wanted; 0: every number needs a unit */
  uint32_t reserved; /**< 0 */
  double absolute_tolerance; /**< of the result, in the unit that was typed */
  double relative_tolerance; /**< of the result. If both are 0, the absolute tolerance is one unit
                                of the last digit that was typed: 0.1 for "12.5" */
  const kelmo_number_format* numbers; /**< null: that of the view; without a view, "1234.5" */
} kelmo_read_options;

/** Reads what a user types, such as "12,5 mm" or "1 234,5 kPa". The number is written as in the
 * format of numbers. Its digits may be in groups, with the mark of the format or with blanks
 * between them. Groups of other sizes and another decimal mark are refused: nothing is guessed. The
 * unit is found as by kelmo_units_find_text. Blanks and line breaks at the ends do not count.
 * `view` and `options` may be null. A text with a last digit below 1e-9 or above 1e9 can be read,
 * but printed only with KELMO_PRINT_ALL_DIGITS.
 *
 * KELMO_INVALID_TEXT: there is no number, it is not right, or there is no unit. KELMO_INVALID_UTF8:
 * the text. KELMO_UNKNOWN_UNIT, KELMO_AMBIGUOUS_UNIT, KELMO_DIFFERENT_KINDS: the unit. A problem
 * has the column, in code points, and the reason: its code is one of KELMO_PROBLEM_NO_NUMBER to
 * KELMO_PROBLEM_OTHER_KIND.
 *
 * Faults of the options give no problem: KELMO_UNKNOWN_UNIT and KELMO_DIFFERENT_KINDS for `code`,
 * KELMO_POINT_UNIT for a point and a relative tolerance, KELMO_INVALID_ARGUMENT for a kind that has
 * no units, and for a format whose marks are equal, blank or letters. */
KELMO_API kelmo_status kelmo_quantity_read(const kelmo_units* units, const kelmo_view* view,
                                           const char* text, size_t text_size,
                                           const kelmo_read_options* options,
                                           kelmo_quantity* result, kelmo_problems* problems);

/* ---- Making arguments (not functions of the library's file) ---- */

/** A text, zero-terminated; null is the empty text. It is not copied. */
static inline kelmo_argument kelmo_text_argument(const char* text) {
  kelmo_argument argument;
  memset(&argument, 0, sizeof argument);
  argument.size = (uint32_t)sizeof argument;
  argument.type = KELMO_ARGUMENT_TEXT;
  argument.text.data = text;
  argument.text.size = text != NULL ? KELMO_ZERO_TERMINATED : 0;
  return argument;
}

/** An integer. */
static inline kelmo_argument kelmo_integer_argument(int64_t integer) {
  kelmo_argument argument = kelmo_text_argument(NULL);
  argument.type = KELMO_ARGUMENT_INTEGER;
  argument.integer = integer;
  return argument;
}

/** A number with that many decimals, or KELMO_SHORTEST. */
static inline kelmo_argument kelmo_number_argument(double number, int32_t decimals) {
  kelmo_argument argument = kelmo_text_argument(NULL);
  argument.type = KELMO_ARGUMENT_NUMBER;
  argument.number = number;
  argument.decimals = decimals;
  return argument;
}

/** A quantity, for a placeholder: `{0}` is "12.5 mm", with the symbol and the digits of
 * kelmo_quantity_print, or all digits. With a format, `{0:.2f}` is its number with two decimals,
 * and the symbol. It is not copied. */
static inline kelmo_argument kelmo_quantity_argument(const kelmo_units* units,
                                                     const kelmo_quantity* quantity) {
  kelmo_argument argument = kelmo_text_argument(NULL);
  argument.type = KELMO_ARGUMENT_QUANTITY;
  argument.units = units;
  argument.quantity = quantity;
  return argument;
}

/** An integer that chooses the plural form. `{count}` stands for it as well as its position. */
static inline kelmo_argument kelmo_count_argument(int64_t integer) {
  kelmo_argument argument = kelmo_integer_argument(integer);
  argument.is_count = 1;
  return argument;
}

/** A number with that many decimals, or KELMO_SHORTEST, that chooses the plural form. */
static inline kelmo_argument kelmo_number_count_argument(double number, int32_t decimals) {
  kelmo_argument argument = kelmo_number_argument(number, decimals);
  argument.is_count = 1;
  return argument;
}

/** `argument` with a name, zero-terminated. It is not copied. */
static inline kelmo_argument kelmo_named_argument(const char* name, kelmo_argument argument) {
  argument.name.data = name;
  argument.name.size = name != NULL ? KELMO_ZERO_TERMINATED : 0;
  return argument;
}

#ifdef __cplusplus
}
#endif

#endif /* KELMO_KELMO_H */
