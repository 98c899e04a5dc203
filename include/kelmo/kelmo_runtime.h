/**
 * @file
 * The functions of kelmo.h for programs that must start without the library's file, because they
 * load it while they run. Written by tools/make_runtime_header.py; do not edit.
 *
 * Include this in the place of kelmo.h, and before kelmo.hpp; do not link the library. The
 * functions have the same names and contracts. One source of the program, in C or in C++, has the
 * code that loads the file:
 *
 *     #define KELMO_RUNTIME_IMPLEMENTATION
 *     #include "kelmo/kelmo_runtime.h"
 *
 * The program opens the library before it calls other functions:
 *
 *     char reason[200];
 *     if (kelmo_runtime_open(KELMO_RUNTIME_FILE, reason, sizeof reason) != KELMO_OK) {
 *       puts(reason);
 *     }
 *
 *  - While no library is open, functions do nothing: they return KELMO_RUNTIME_NOT_OPEN, 0, a null
 *    pointer or the empty text.
 *  - All sources of a program, or of a shared library, include either this header or kelmo.h. A
 *    shared library hides its symbols (-fvisibility=hidden): then it opens the library for itself.
 *  - On Linux, a C library before glibc 2.34 needs the option -ldl.
 */
#ifndef KELMO_KELMO_RUNTIME_H
#define KELMO_KELMO_RUNTIME_H

#ifdef KELMO_KELMO_H
#error "Include kelmo_runtime.h before kelmo.h and kelmo.hpp: it takes the place of kelmo.h."
#endif

/* The functions of kelmo.h are defined below, under other names: the program may have a part that is
 * linked to the library. */
/* clang-format off */
#define kelmo_version kelmo_loaded_version
#define kelmo_status_name kelmo_loaded_status_name
#define kelmo_problems_create kelmo_loaded_problems_create
#define kelmo_problems_destroy kelmo_loaded_problems_destroy
#define kelmo_problems_count kelmo_loaded_problems_count
#define kelmo_problems_lost kelmo_loaded_problems_lost
#define kelmo_problems_get kelmo_loaded_problems_get
#define kelmo_problems_print kelmo_loaded_problems_print
#define kelmo_problems_clear kelmo_loaded_problems_clear
#define kelmo_loader_create kelmo_loaded_loader_create
#define kelmo_loader_destroy kelmo_loaded_loader_destroy
#define kelmo_loader_add_file kelmo_loaded_loader_add_file
#define kelmo_loader_add_folder kelmo_loaded_loader_add_folder
#define kelmo_loader_add_memory kelmo_loaded_loader_add_memory
#define kelmo_loader_finish kelmo_loaded_loader_finish
#define kelmo_texts_retain kelmo_loaded_texts_retain
#define kelmo_texts_release kelmo_loaded_texts_release
#define kelmo_texts_language_count kelmo_loaded_texts_language_count
#define kelmo_texts_language kelmo_loaded_texts_language
#define kelmo_texts_match_language kelmo_loaded_texts_match_language
#define kelmo_texts_entry kelmo_loaded_texts_entry
#define kelmo_number_format_of_language kelmo_loaded_number_format_of_language
#define kelmo_number_format_of_user kelmo_loaded_number_format_of_user
#define kelmo_number_print kelmo_loaded_number_print
#define kelmo_view_create kelmo_loaded_view_create
#define kelmo_view_retain kelmo_loaded_view_retain
#define kelmo_view_release kelmo_loaded_view_release
#define kelmo_view_texts kelmo_loaded_view_texts
#define kelmo_view_text kelmo_loaded_view_text
#define kelmo_view_find kelmo_loaded_view_find
#define kelmo_view_format kelmo_loaded_view_format
#define kelmo_view_take_problems kelmo_loaded_view_take_problems
#define kelmo_system_language kelmo_loaded_system_language
#define kelmo_units_loader_create kelmo_loaded_units_loader_create
#define kelmo_units_loader_destroy kelmo_loaded_units_loader_destroy
#define kelmo_units_loader_add kelmo_loaded_units_loader_add
#define kelmo_units_loader_add_file kelmo_loaded_units_loader_add_file
#define kelmo_units_loader_add_memory kelmo_loaded_units_loader_add_memory
#define kelmo_units_loader_finish kelmo_loaded_units_loader_finish
#define kelmo_units_retain kelmo_loaded_units_retain
#define kelmo_units_release kelmo_loaded_units_release
#define kelmo_units_kind_count kelmo_loaded_units_kind_count
#define kelmo_units_kind kelmo_loaded_units_kind
#define kelmo_units_count kelmo_loaded_units_count
#define kelmo_units_at kelmo_loaded_units_at
#define kelmo_units_find kelmo_loaded_units_find
#define kelmo_units_find_text kelmo_loaded_units_find_text
#define kelmo_units_convert kelmo_loaded_units_convert
#define kelmo_quantity_add kelmo_loaded_quantity_add
#define kelmo_quantity_subtract kelmo_loaded_quantity_subtract
#define kelmo_quantity_multiply kelmo_loaded_quantity_multiply
#define kelmo_quantity_divide kelmo_loaded_quantity_divide
#define kelmo_quantity_ratio kelmo_loaded_quantity_ratio
#define kelmo_quantity_sum kelmo_loaded_quantity_sum
#define kelmo_quantity_compare kelmo_loaded_quantity_compare
#define kelmo_quantity_hash kelmo_loaded_quantity_hash
#define kelmo_quantity_convert kelmo_loaded_quantity_convert
#define kelmo_quantity_round kelmo_loaded_quantity_round
#define kelmo_quantity_print kelmo_loaded_quantity_print
#define kelmo_quantity_read kelmo_loaded_quantity_read
/* clang-format on */
#ifdef __cplusplus
#define KELMO_API inline
#else
#define KELMO_API static inline
#endif
#include "kelmo.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The name of the library's file. */
#ifdef _WIN32
#define KELMO_RUNTIME_FILE "kelmo-0.dll"
#else
#define KELMO_RUNTIME_FILE "libkelmo.so.0"
#endif

/** Results beside those of kelmo.h. */
enum {
  KELMO_RUNTIME_NOT_OPEN = -1001,    /**< of all functions of kelmo.h: no library is open */
  KELMO_RUNTIME_NO_FUNCTION = -1002, /**< the file lacks a function, so it is another library */
  KELMO_RUNTIME_TOO_OLD = -1003, /**< the version of the file is lower than that of this header */
  KELMO_RUNTIME_TOO_NEW = -1004  /**< the major number of the file is larger than the header's */
};

/** Loads the library from a file. `path` is UTF-8 and zero-terminated. A name without a folder is
 * looked for on Windows in the folder of the program and in that of the system only, on Linux where
 * the loader looks for libraries. `reason`, which may be null if `capacity` is 0, gets one line for
 * people, in English or in the language of the system, and is empty on success.
 *
 * KELMO_CANNOT_READ: the system cannot load the file. KELMO_RUNTIME_NO_FUNCTION,
 * KELMO_RUNTIME_TOO_OLD, KELMO_RUNTIME_TOO_NEW. KELMO_INVALID_ARGUMENT: also if a library is open
 * already. KELMO_INVALID_UTF8: on Windows, the path is not UTF-8. When it fails, no library is open,
 * or the same as before. kelmo_status_name needs no library to name these.
 *
 * While this function or kelmo_runtime_close runs, no other thread may call any function. */
kelmo_status kelmo_runtime_open(const char* path, char* reason, size_t capacity);

/** Unloads the library. All its objects must have been destroyed or released before. Does nothing
 * if no library is open. */
void kelmo_runtime_close(void);

/* ---- For the code of this header only ---- */

/* clang-format off */
struct kelmo_runtime_functions {
  uint32_t (*version)(void);
  const char* (*status_name)(kelmo_status status);
  kelmo_status (*problems_create)(kelmo_problems** result);
  void (*problems_destroy)(kelmo_problems* problems);
  size_t (*problems_count)(const kelmo_problems* problems);
  size_t (*problems_lost)(const kelmo_problems* problems);
  kelmo_status (*problems_get)(const kelmo_problems* problems, size_t index, kelmo_problem* result);
  kelmo_status (*problems_print)(const kelmo_problems* problems, size_t index, char* buffer, size_t capacity, size_t* needed);
  void (*problems_clear)(kelmo_problems* problems);
  kelmo_status (*loader_create)(kelmo_loader** result);
  void (*loader_destroy)(kelmo_loader* loader);
  kelmo_status (*loader_add_file)(kelmo_loader* loader, const char* path, size_t path_size, const kelmo_load_options* options, kelmo_problems* problems);
  kelmo_status (*loader_add_folder)(kelmo_loader* loader, const char* path, size_t path_size, const kelmo_load_options* options, kelmo_problems* problems);
  kelmo_status (*loader_add_memory)(kelmo_loader* loader, const void* bytes, size_t size, const char* name, size_t name_size, const kelmo_load_options* options, kelmo_problems* problems);
  kelmo_status (*loader_finish)(kelmo_loader* loader, kelmo_texts** result, kelmo_problems* problems);
  kelmo_texts* (*texts_retain)(kelmo_texts* texts);
  void (*texts_release)(kelmo_texts* texts);
  size_t (*texts_language_count)(const kelmo_texts* texts);
  kelmo_status (*texts_language)(const kelmo_texts* texts, size_t index, kelmo_language* result);
  kelmo_status (*texts_match_language)(const kelmo_texts* texts, const char* wanted, size_t wanted_size, size_t rank, size_t* index);
  kelmo_status (*texts_entry)(const kelmo_texts* texts, size_t language, size_t index, kelmo_text* result);
  kelmo_status (*number_format_of_language)(const char* id, size_t id_size, kelmo_number_format* result);
  kelmo_status (*number_format_of_user)(kelmo_number_format* result);
  kelmo_status (*number_print)(const kelmo_number_format* format, const kelmo_argument* number, char* buffer, size_t capacity, size_t* needed);
  kelmo_status (*view_create)(kelmo_texts* texts, const kelmo_view_options* options, kelmo_view** result, kelmo_problems* problems);
  kelmo_view* (*view_retain)(kelmo_view* view);
  void (*view_release)(kelmo_view* view);
  kelmo_texts* (*view_texts)(const kelmo_view* view);
  const char* (*view_text)(const kelmo_view* view, const char* key, size_t key_size, size_t* size);
  kelmo_status (*view_find)(const kelmo_view* view, const char* key, size_t key_size, const kelmo_argument* count, kelmo_text* result);
  kelmo_status (*view_format)(const kelmo_view* view, const char* key, size_t key_size, const kelmo_argument* arguments, size_t argument_count, char* buffer, size_t capacity, size_t* needed, kelmo_problems* problems);
  kelmo_status (*view_take_problems)(kelmo_view* view, kelmo_problems* problems, size_t* lost);
  kelmo_status (*system_language)(size_t index, char* buffer, size_t capacity, size_t* needed);
  kelmo_status (*units_loader_create)(int32_t start, kelmo_units_loader** result);
  void (*units_loader_destroy)(kelmo_units_loader* loader);
  kelmo_status (*units_loader_add)(kelmo_units_loader* loader, const kelmo_unit* unit, kelmo_problems* problems);
  kelmo_status (*units_loader_add_file)(kelmo_units_loader* loader, const char* path, size_t path_size, int32_t format, kelmo_problems* problems);
  kelmo_status (*units_loader_add_memory)(kelmo_units_loader* loader, const void* bytes, size_t size, const char* name, size_t name_size, int32_t format, kelmo_problems* problems);
  kelmo_status (*units_loader_finish)(kelmo_units_loader* loader, kelmo_units** result, kelmo_problems* problems);
  kelmo_units* (*units_retain)(kelmo_units* units);
  void (*units_release)(kelmo_units* units);
  size_t (*units_kind_count)(const kelmo_units* units);
  kelmo_status (*units_kind)(const kelmo_units* units, const kelmo_view* view, size_t index, kelmo_unit* result);
  size_t (*units_count)(const kelmo_units* units, int32_t kind);
  kelmo_status (*units_at)(const kelmo_units* units, const kelmo_view* view, int32_t kind, size_t index, kelmo_unit* result);
  kelmo_status (*units_find)(const kelmo_units* units, const kelmo_view* view, int32_t code, kelmo_unit* result);
  kelmo_status (*units_find_text)(const kelmo_units* units, const kelmo_view* view, int32_t kind, const char* text, size_t text_size, kelmo_unit* result, kelmo_problems* problems);
  kelmo_status (*units_convert)(const kelmo_units* units, int32_t from, int32_t to, const double* numbers, size_t count, double* results);
  kelmo_status (*quantity_add)(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, kelmo_quantity* result);
  kelmo_status (*quantity_subtract)(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, kelmo_quantity* result);
  kelmo_status (*quantity_multiply)(const kelmo_units* units, const kelmo_quantity* quantity, double factor, kelmo_quantity* result);
  kelmo_status (*quantity_divide)(const kelmo_units* units, const kelmo_quantity* quantity, double divisor, kelmo_quantity* result);
  kelmo_status (*quantity_ratio)(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, double* result);
  kelmo_status (*quantity_sum)(const kelmo_units* units, const kelmo_quantity* quantities, size_t count, kelmo_quantity* result);
  kelmo_status (*quantity_compare)(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, int32_t* result);
  kelmo_status (*quantity_hash)(const kelmo_units* units, const kelmo_quantity* quantity, uint64_t* result);
  kelmo_status (*quantity_convert)(const kelmo_units* units, const kelmo_quantity* quantities, size_t count, int32_t code, kelmo_quantity* results);
  kelmo_status (*quantity_round)(const kelmo_units* units, const kelmo_quantity* quantity, double* result);
  kelmo_status (*quantity_print)(const kelmo_units* units, const kelmo_view* view, const kelmo_quantity* quantity, const kelmo_print_options* options, char* buffer, size_t capacity, size_t* needed);
  kelmo_status (*quantity_read)(const kelmo_units* units, const kelmo_view* view, const char* text, size_t text_size, const kelmo_read_options* options, kelmo_quantity* result, kelmo_problems* problems);
  void* module; /* null: no library is open */
};
/* clang-format on */

extern struct kelmo_runtime_functions kelmo_runtime_loaded;

/** 1 if a library is open, otherwise 0. */
KELMO_API int kelmo_runtime_is_open(void) { return kelmo_runtime_loaded.module != NULL; }

/** Names also the results that only this header has, and needs no library. A later library may have
 * more. */
KELMO_API const char* kelmo_runtime_status_name(kelmo_status status) {
  switch (status) {
    /* clang-format off */
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
    case KELMO_RUNTIME_NOT_OPEN:
      return "KELMO_RUNTIME_NOT_OPEN";
    case KELMO_RUNTIME_NO_FUNCTION:
      return "KELMO_RUNTIME_NO_FUNCTION";
    case KELMO_RUNTIME_TOO_OLD:
      return "KELMO_RUNTIME_TOO_OLD";
    case KELMO_RUNTIME_TOO_NEW:
      return "KELMO_RUNTIME_TOO_NEW";
    /* clang-format on */
    default:
      return kelmo_runtime_is_open() ? kelmo_runtime_loaded.status_name(status) : "unknown status";
  }
}

KELMO_API const char* kelmo_runtime_no_text(size_t* size) {
  if (size != NULL) {
    *size = 0;
  }
  return "";
}

/* ---- The functions of kelmo.h ---- */

/* clang-format off */
KELMO_API uint32_t kelmo_version(void) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.version() : 0;
}

KELMO_API const char* kelmo_status_name(kelmo_status status) {
  return kelmo_runtime_status_name(status);
}

KELMO_API kelmo_status kelmo_problems_create(kelmo_problems** result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.problems_create(result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API void kelmo_problems_destroy(kelmo_problems* problems) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.problems_destroy(problems);
  }
}

KELMO_API size_t kelmo_problems_count(const kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.problems_count(problems) : 0;
}

KELMO_API size_t kelmo_problems_lost(const kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.problems_lost(problems) : 0;
}

KELMO_API kelmo_status kelmo_problems_get(const kelmo_problems* problems, size_t index, kelmo_problem* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.problems_get(problems, index, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_problems_print(const kelmo_problems* problems, size_t index, char* buffer, size_t capacity, size_t* needed) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.problems_print(problems, index, buffer, capacity, needed) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API void kelmo_problems_clear(kelmo_problems* problems) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.problems_clear(problems);
  }
}

KELMO_API kelmo_status kelmo_loader_create(kelmo_loader** result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.loader_create(result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API void kelmo_loader_destroy(kelmo_loader* loader) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.loader_destroy(loader);
  }
}

KELMO_API kelmo_status kelmo_loader_add_file(kelmo_loader* loader, const char* path, size_t path_size, const kelmo_load_options* options, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.loader_add_file(loader, path, path_size, options, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_loader_add_folder(kelmo_loader* loader, const char* path, size_t path_size, const kelmo_load_options* options, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.loader_add_folder(loader, path, path_size, options, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_loader_add_memory(kelmo_loader* loader, const void* bytes, size_t size, const char* name, size_t name_size, const kelmo_load_options* options, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.loader_add_memory(loader, bytes, size, name, name_size, options, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_loader_finish(kelmo_loader* loader, kelmo_texts** result, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.loader_finish(loader, result, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_texts* kelmo_texts_retain(kelmo_texts* texts) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.texts_retain(texts) : NULL;
}

KELMO_API void kelmo_texts_release(kelmo_texts* texts) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.texts_release(texts);
  }
}

KELMO_API size_t kelmo_texts_language_count(const kelmo_texts* texts) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.texts_language_count(texts) : 0;
}

KELMO_API kelmo_status kelmo_texts_language(const kelmo_texts* texts, size_t index, kelmo_language* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.texts_language(texts, index, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_texts_match_language(const kelmo_texts* texts, const char* wanted, size_t wanted_size, size_t rank, size_t* index) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.texts_match_language(texts, wanted, wanted_size, rank, index) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_texts_entry(const kelmo_texts* texts, size_t language, size_t index, kelmo_text* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.texts_entry(texts, language, index, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_number_format_of_language(const char* id, size_t id_size, kelmo_number_format* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.number_format_of_language(id, id_size, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_number_format_of_user(kelmo_number_format* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.number_format_of_user(result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_number_print(const kelmo_number_format* format, const kelmo_argument* number, char* buffer, size_t capacity, size_t* needed) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.number_print(format, number, buffer, capacity, needed) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_view_create(kelmo_texts* texts, const kelmo_view_options* options, kelmo_view** result, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_create(texts, options, result, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_view* kelmo_view_retain(kelmo_view* view) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_retain(view) : NULL;
}

KELMO_API void kelmo_view_release(kelmo_view* view) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.view_release(view);
  }
}

KELMO_API kelmo_texts* kelmo_view_texts(const kelmo_view* view) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_texts(view) : NULL;
}

KELMO_API const char* kelmo_view_text(const kelmo_view* view, const char* key, size_t key_size, size_t* size) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_text(view, key, key_size, size) : kelmo_runtime_no_text(size);
}

KELMO_API kelmo_status kelmo_view_find(const kelmo_view* view, const char* key, size_t key_size, const kelmo_argument* count, kelmo_text* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_find(view, key, key_size, count, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_view_format(const kelmo_view* view, const char* key, size_t key_size, const kelmo_argument* arguments, size_t argument_count, char* buffer, size_t capacity, size_t* needed, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_format(view, key, key_size, arguments, argument_count, buffer, capacity, needed, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_view_take_problems(kelmo_view* view, kelmo_problems* problems, size_t* lost) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.view_take_problems(view, problems, lost) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_system_language(size_t index, char* buffer, size_t capacity, size_t* needed) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.system_language(index, buffer, capacity, needed) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_loader_create(int32_t start, kelmo_units_loader** result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_loader_create(start, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API void kelmo_units_loader_destroy(kelmo_units_loader* loader) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.units_loader_destroy(loader);
  }
}

KELMO_API kelmo_status kelmo_units_loader_add(kelmo_units_loader* loader, const kelmo_unit* unit, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_loader_add(loader, unit, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_loader_add_file(kelmo_units_loader* loader, const char* path, size_t path_size, int32_t format, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_loader_add_file(loader, path, path_size, format, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_loader_add_memory(kelmo_units_loader* loader, const void* bytes, size_t size, const char* name, size_t name_size, int32_t format, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_loader_add_memory(loader, bytes, size, name, name_size, format, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_loader_finish(kelmo_units_loader* loader, kelmo_units** result, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_loader_finish(loader, result, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_units* kelmo_units_retain(kelmo_units* units) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_retain(units) : NULL;
}

KELMO_API void kelmo_units_release(kelmo_units* units) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_loaded.units_release(units);
  }
}

KELMO_API size_t kelmo_units_kind_count(const kelmo_units* units) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_kind_count(units) : 0;
}

KELMO_API kelmo_status kelmo_units_kind(const kelmo_units* units, const kelmo_view* view, size_t index, kelmo_unit* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_kind(units, view, index, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API size_t kelmo_units_count(const kelmo_units* units, int32_t kind) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_count(units, kind) : 0;
}

KELMO_API kelmo_status kelmo_units_at(const kelmo_units* units, const kelmo_view* view, int32_t kind, size_t index, kelmo_unit* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_at(units, view, kind, index, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_find(const kelmo_units* units, const kelmo_view* view, int32_t code, kelmo_unit* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_find(units, view, code, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_find_text(const kelmo_units* units, const kelmo_view* view, int32_t kind, const char* text, size_t text_size, kelmo_unit* result, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_find_text(units, view, kind, text, text_size, result, problems) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_units_convert(const kelmo_units* units, int32_t from, int32_t to, const double* numbers, size_t count, double* results) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.units_convert(units, from, to, numbers, count, results) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_add(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, kelmo_quantity* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_add(units, left, right, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_subtract(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, kelmo_quantity* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_subtract(units, left, right, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_multiply(const kelmo_units* units, const kelmo_quantity* quantity, double factor, kelmo_quantity* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_multiply(units, quantity, factor, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_divide(const kelmo_units* units, const kelmo_quantity* quantity, double divisor, kelmo_quantity* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_divide(units, quantity, divisor, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_ratio(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, double* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_ratio(units, left, right, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_sum(const kelmo_units* units, const kelmo_quantity* quantities, size_t count, kelmo_quantity* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_sum(units, quantities, count, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_compare(const kelmo_units* units, const kelmo_quantity* left, const kelmo_quantity* right, int32_t* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_compare(units, left, right, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_hash(const kelmo_units* units, const kelmo_quantity* quantity, uint64_t* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_hash(units, quantity, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_convert(const kelmo_units* units, const kelmo_quantity* quantities, size_t count, int32_t code, kelmo_quantity* results) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_convert(units, quantities, count, code, results) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_round(const kelmo_units* units, const kelmo_quantity* quantity, double* result) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_round(units, quantity, result) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_print(const kelmo_units* units, const kelmo_view* view, const kelmo_quantity* quantity, const kelmo_print_options* options, char* buffer, size_t capacity, size_t* needed) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_print(units, view, quantity, options, buffer, capacity, needed) : KELMO_RUNTIME_NOT_OPEN;
}

KELMO_API kelmo_status kelmo_quantity_read(const kelmo_units* units, const kelmo_view* view, const char* text, size_t text_size, const kelmo_read_options* options, kelmo_quantity* result, kelmo_problems* problems) {
  return kelmo_runtime_is_open() ? kelmo_runtime_loaded.quantity_read(units, view, text, text_size, options, result, problems) : KELMO_RUNTIME_NOT_OPEN;
}
/* clang-format on */

#ifdef __cplusplus
}
#endif

#endif /* KELMO_KELMO_RUNTIME_H */

/* ---- The code that loads the file ---- */

#if defined(KELMO_RUNTIME_IMPLEMENTATION) && !defined(KELMO_RUNTIME_IMPLEMENTED)
#define KELMO_RUNTIME_IMPLEMENTED

#include <stdio.h>
#ifdef _WIN32
#include <stdlib.h>
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#ifdef __cplusplus
extern "C" {
#endif

struct kelmo_runtime_functions kelmo_runtime_loaded;

/* Writes both texts behind each other, and leaves out a character that would be cut. */
static void kelmo_runtime_tell(const char* first, const char* second, char* reason,
                               size_t capacity) {
  const size_t first_size = strlen(first);
  size_t size = first_size + strlen(second);
  if (capacity == 0) {
    return;
  }
  if (size >= capacity) {
    size = capacity - 1;
    while (size > first_size && ((unsigned char)second[size - first_size] & 0xC0) == 0x80) {
      --size;
    }
  }
  snprintf(reason, size + 1, "%s%s", first, second);
}

#ifdef _WIN32

/* Looks for the libraries that the file needs beside it and in the folder of the system only. */
static HMODULE kelmo_runtime_load_at(const WCHAR* path) {
  HMODULE module = NULL;
  const DWORD capacity = GetFullPathNameW(path, 0, NULL, NULL);
  WCHAR* const absolute = (WCHAR*)calloc(capacity + 1, sizeof(WCHAR));
  if (absolute != NULL && GetFullPathNameW(path, capacity, absolute, NULL) != 0) {
    module = LoadLibraryExW(absolute, NULL,
                            LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
  free(absolute);
  return module;
}

static kelmo_status kelmo_runtime_load(const char* path, void** module, char* reason,
                                       size_t capacity) {
  char error[16] = "";
  DWORD mode = 0;
  WCHAR* wide = NULL;
  const int size = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, NULL, 0);
  if (size == 0) {
    kelmo_runtime_tell("the path is not UTF-8", "", reason, capacity);
    return KELMO_INVALID_UTF8;
  }
  wide = (WCHAR*)calloc((size_t)size, sizeof(WCHAR));
  if (wide == NULL) {
    return KELMO_OUT_OF_MEMORY;
  }
  MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, wide, size);
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode); /* otherwise the system may show a window */
  if (wcspbrk(wide, L"\\/:") != NULL) {
    *module = kelmo_runtime_load_at(wide);
  } else {
    *module = LoadLibraryExW(wide, NULL,
                             LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
  snprintf(error, sizeof error, "%lu: ", GetLastError());
  SetThreadErrorMode(mode, NULL);
  free(wide);
  if (*module == NULL) {
    char begin[64];
    snprintf(begin, sizeof begin, "the system cannot load this file, error %s", error);
    kelmo_runtime_tell(begin, path, reason, capacity);
    return KELMO_CANNOT_READ;
  }
  return KELMO_OK;
}

static int kelmo_runtime_take(void* module, const char* name, void* function) {
  const FARPROC address = GetProcAddress((HMODULE)module, name);
  memcpy(function, &address, sizeof address);
  return address != NULL;
}

static void kelmo_runtime_unload(void* module) { FreeLibrary((HMODULE)module); }

#else

static kelmo_status kelmo_runtime_load(const char* path, void** module, char* reason,
                                       size_t capacity) {
  *module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (*module == NULL) {
    kelmo_runtime_tell("the system cannot load this file: ", dlerror(), reason, capacity);
    return KELMO_CANNOT_READ;
  }
  return KELMO_OK;
}

/* Copies the bytes, because C has no conversion from an object pointer to a function pointer. */
static int kelmo_runtime_take(void* module, const char* name, void* function) {
  void* const address = dlsym(module, name);
  memcpy(function, &address, sizeof address);
  return address != NULL;
}

static void kelmo_runtime_unload(void* module) { dlclose(module); }

#endif

/* The function of the version is the first one: another version may lack functions. */
static kelmo_status kelmo_runtime_take_all(struct kelmo_runtime_functions* found, char* reason,
                                           size_t capacity) {
  /* clang-format off */
  static const struct {
    const char* name;
    size_t offset;
  } functions[] = {
    {"kelmo_version", offsetof(struct kelmo_runtime_functions, version)},
    {"kelmo_status_name", offsetof(struct kelmo_runtime_functions, status_name)},
    {"kelmo_problems_create", offsetof(struct kelmo_runtime_functions, problems_create)},
    {"kelmo_problems_destroy", offsetof(struct kelmo_runtime_functions, problems_destroy)},
    {"kelmo_problems_count", offsetof(struct kelmo_runtime_functions, problems_count)},
    {"kelmo_problems_lost", offsetof(struct kelmo_runtime_functions, problems_lost)},
    {"kelmo_problems_get", offsetof(struct kelmo_runtime_functions, problems_get)},
    {"kelmo_problems_print", offsetof(struct kelmo_runtime_functions, problems_print)},
    {"kelmo_problems_clear", offsetof(struct kelmo_runtime_functions, problems_clear)},
    {"kelmo_loader_create", offsetof(struct kelmo_runtime_functions, loader_create)},
    {"kelmo_loader_destroy", offsetof(struct kelmo_runtime_functions, loader_destroy)},
    {"kelmo_loader_add_file", offsetof(struct kelmo_runtime_functions, loader_add_file)},
    {"kelmo_loader_add_folder", offsetof(struct kelmo_runtime_functions, loader_add_folder)},
    {"kelmo_loader_add_memory", offsetof(struct kelmo_runtime_functions, loader_add_memory)},
    {"kelmo_loader_finish", offsetof(struct kelmo_runtime_functions, loader_finish)},
    {"kelmo_texts_retain", offsetof(struct kelmo_runtime_functions, texts_retain)},
    {"kelmo_texts_release", offsetof(struct kelmo_runtime_functions, texts_release)},
    {"kelmo_texts_language_count", offsetof(struct kelmo_runtime_functions, texts_language_count)},
    {"kelmo_texts_language", offsetof(struct kelmo_runtime_functions, texts_language)},
    {"kelmo_texts_match_language", offsetof(struct kelmo_runtime_functions, texts_match_language)},
    {"kelmo_texts_entry", offsetof(struct kelmo_runtime_functions, texts_entry)},
    {"kelmo_number_format_of_language", offsetof(struct kelmo_runtime_functions, number_format_of_language)},
    {"kelmo_number_format_of_user", offsetof(struct kelmo_runtime_functions, number_format_of_user)},
    {"kelmo_number_print", offsetof(struct kelmo_runtime_functions, number_print)},
    {"kelmo_view_create", offsetof(struct kelmo_runtime_functions, view_create)},
    {"kelmo_view_retain", offsetof(struct kelmo_runtime_functions, view_retain)},
    {"kelmo_view_release", offsetof(struct kelmo_runtime_functions, view_release)},
    {"kelmo_view_texts", offsetof(struct kelmo_runtime_functions, view_texts)},
    {"kelmo_view_text", offsetof(struct kelmo_runtime_functions, view_text)},
    {"kelmo_view_find", offsetof(struct kelmo_runtime_functions, view_find)},
    {"kelmo_view_format", offsetof(struct kelmo_runtime_functions, view_format)},
    {"kelmo_view_take_problems", offsetof(struct kelmo_runtime_functions, view_take_problems)},
    {"kelmo_system_language", offsetof(struct kelmo_runtime_functions, system_language)},
    {"kelmo_units_loader_create", offsetof(struct kelmo_runtime_functions, units_loader_create)},
    {"kelmo_units_loader_destroy", offsetof(struct kelmo_runtime_functions, units_loader_destroy)},
    {"kelmo_units_loader_add", offsetof(struct kelmo_runtime_functions, units_loader_add)},
    {"kelmo_units_loader_add_file", offsetof(struct kelmo_runtime_functions, units_loader_add_file)},
    {"kelmo_units_loader_add_memory", offsetof(struct kelmo_runtime_functions, units_loader_add_memory)},
    {"kelmo_units_loader_finish", offsetof(struct kelmo_runtime_functions, units_loader_finish)},
    {"kelmo_units_retain", offsetof(struct kelmo_runtime_functions, units_retain)},
    {"kelmo_units_release", offsetof(struct kelmo_runtime_functions, units_release)},
    {"kelmo_units_kind_count", offsetof(struct kelmo_runtime_functions, units_kind_count)},
    {"kelmo_units_kind", offsetof(struct kelmo_runtime_functions, units_kind)},
    {"kelmo_units_count", offsetof(struct kelmo_runtime_functions, units_count)},
    {"kelmo_units_at", offsetof(struct kelmo_runtime_functions, units_at)},
    {"kelmo_units_find", offsetof(struct kelmo_runtime_functions, units_find)},
    {"kelmo_units_find_text", offsetof(struct kelmo_runtime_functions, units_find_text)},
    {"kelmo_units_convert", offsetof(struct kelmo_runtime_functions, units_convert)},
    {"kelmo_quantity_add", offsetof(struct kelmo_runtime_functions, quantity_add)},
    {"kelmo_quantity_subtract", offsetof(struct kelmo_runtime_functions, quantity_subtract)},
    {"kelmo_quantity_multiply", offsetof(struct kelmo_runtime_functions, quantity_multiply)},
    {"kelmo_quantity_divide", offsetof(struct kelmo_runtime_functions, quantity_divide)},
    {"kelmo_quantity_ratio", offsetof(struct kelmo_runtime_functions, quantity_ratio)},
    {"kelmo_quantity_sum", offsetof(struct kelmo_runtime_functions, quantity_sum)},
    {"kelmo_quantity_compare", offsetof(struct kelmo_runtime_functions, quantity_compare)},
    {"kelmo_quantity_hash", offsetof(struct kelmo_runtime_functions, quantity_hash)},
    {"kelmo_quantity_convert", offsetof(struct kelmo_runtime_functions, quantity_convert)},
    {"kelmo_quantity_round", offsetof(struct kelmo_runtime_functions, quantity_round)},
    {"kelmo_quantity_print", offsetof(struct kelmo_runtime_functions, quantity_print)},
    {"kelmo_quantity_read", offsetof(struct kelmo_runtime_functions, quantity_read)},
  };
  /* clang-format on */
  size_t i = 0;
  for (i = 0; i < sizeof functions / sizeof functions[0]; ++i) {
    void* const function = (char*)found + functions[i].offset;
    if (!kelmo_runtime_take(found->module, functions[i].name, function)) {
      kelmo_runtime_tell("the file lacks the function ", functions[i].name, reason, capacity);
      return KELMO_RUNTIME_NO_FUNCTION;
    }
    if (i == 0) {
      const uint32_t version = found->version();
      if (version < KELMO_VERSION || version / 10000 > KELMO_VERSION / 10000) {
        char numbers[64];
        snprintf(numbers, sizeof numbers, "%lu, and the program needs %lu", (unsigned long)version,
                 (unsigned long)KELMO_VERSION);
        kelmo_runtime_tell("the file has the version ", numbers, reason, capacity);
        return version < KELMO_VERSION ? KELMO_RUNTIME_TOO_OLD : KELMO_RUNTIME_TOO_NEW;
      }
    }
  }
  return KELMO_OK;
}

kelmo_status kelmo_runtime_open(const char* path, char* reason, size_t capacity) {
  struct kelmo_runtime_functions found;
  kelmo_status status = KELMO_OK;
  if (reason == NULL && capacity != 0) {
    return KELMO_INVALID_ARGUMENT;
  }
  kelmo_runtime_tell("", "", reason, capacity);
  if (path == NULL || path[0] == '\0') { /* Linux takes the empty path for the program itself */
    kelmo_runtime_tell("there is no path", "", reason, capacity);
    return KELMO_INVALID_ARGUMENT;
  }
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_tell("a library is open already", "", reason, capacity);
    return KELMO_INVALID_ARGUMENT;
  }
  memset(&found, 0, sizeof found);
  status = kelmo_runtime_load(path, &found.module, reason, capacity);
  if (status != KELMO_OK) {
    return status;
  }
  status = kelmo_runtime_take_all(&found, reason, capacity);
  if (status != KELMO_OK) {
    kelmo_runtime_unload(found.module);
    return status;
  }
  kelmo_runtime_loaded = found;
  return KELMO_OK;
}

void kelmo_runtime_close(void) {
  if (kelmo_runtime_is_open()) {
    kelmo_runtime_unload(kelmo_runtime_loaded.module);
    memset(&kelmo_runtime_loaded, 0, sizeof kelmo_runtime_loaded);
  }
}

#ifdef __cplusplus
}
#endif

#endif /* KELMO_RUNTIME_IMPLEMENTATION */
