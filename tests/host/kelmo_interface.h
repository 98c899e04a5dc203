/* What hosts have compiled into themselves: sizes and offsets of the structs of kelmo.h, and its
 * values. Hosts and bindings of other languages make the structs in their own memory: a change of an
 * offset, a size of a field or a value breaks every existing one. A later version may add fields at
 * the end of a struct, and values. The sizes grow then, and the library still accepts the first
 * ones, which are those below.
 *
 * check_headers.py compiles this as C11 and later, and compares it with the declarations of kelmo.h.
 */
#ifndef TESTS_HOST_KELMO_INTERFACE_H
#define TESTS_HOST_KELMO_INTERFACE_H

#include "kelmo/kelmo.h"

#ifdef __cplusplus
#define KELMO_HOLDS(condition) static_assert(condition, #condition)
#else
#define KELMO_HOLDS(condition) _Static_assert(condition, #condition)
#endif
#define KELMO_SIZE(type, bytes) KELMO_HOLDS(sizeof(type) == (bytes))
#define KELMO_FIELD(type, field, offset, bytes) \
  KELMO_HOLDS(offsetof(type, field) == (offset) && sizeof(((type*)0)->field) == (bytes))
#define KELMO_VALUE(name, value) KELMO_HOLDS((name) == (value))

/* These two have no size in front: they never grow. */
KELMO_SIZE(kelmo_string, 16);
KELMO_FIELD(kelmo_string, data, 0, 8);
KELMO_FIELD(kelmo_string, size, 8, 8);

KELMO_SIZE(kelmo_quantity, 32);
KELMO_FIELD(kelmo_quantity, number, 0, 8);
KELMO_FIELD(kelmo_quantity, absolute_tolerance, 8, 8);
KELMO_FIELD(kelmo_quantity, relative_tolerance, 16, 8);
KELMO_FIELD(kelmo_quantity, code, 24, 4);
KELMO_FIELD(kelmo_quantity, reserved, 28, 4);

KELMO_SIZE(kelmo_problem, 104);
KELMO_FIELD(kelmo_problem, size, 0, 4);
KELMO_FIELD(kelmo_problem, code, 4, 4);
KELMO_FIELD(kelmo_problem, severity, 8, 4);
KELMO_FIELD(kelmo_problem, line, 12, 4);
KELMO_FIELD(kelmo_problem, column, 16, 4);
KELMO_FIELD(kelmo_problem, reserved, 20, 4);
KELMO_FIELD(kelmo_problem, sentence, 24, 16);
KELMO_FIELD(kelmo_problem, key, 40, 16);
KELMO_FIELD(kelmo_problem, language, 56, 16);
KELMO_FIELD(kelmo_problem, file, 72, 16);
KELMO_FIELD(kelmo_problem, detail, 88, 16);

KELMO_SIZE(kelmo_load_options, 8);
KELMO_FIELD(kelmo_load_options, size, 0, 4);
KELMO_FIELD(kelmo_load_options, flags, 4, 4);

KELMO_SIZE(kelmo_language, 48);
KELMO_FIELD(kelmo_language, size, 0, 4);
KELMO_FIELD(kelmo_language, reserved, 4, 4);
KELMO_FIELD(kelmo_language, id, 8, 16);
KELMO_FIELD(kelmo_language, name, 24, 16);
KELMO_FIELD(kelmo_language, entry_count, 40, 8);

KELMO_SIZE(kelmo_text, 88);
KELMO_FIELD(kelmo_text, size, 0, 4);
KELMO_FIELD(kelmo_text, line, 4, 4);
KELMO_FIELD(kelmo_text, utf8, 8, 8);
KELMO_FIELD(kelmo_text, utf8_size, 16, 8);
KELMO_FIELD(kelmo_text, utf16, 24, 8);
KELMO_FIELD(kelmo_text, utf16_size, 32, 8);
KELMO_FIELD(kelmo_text, language, 40, 16);
KELMO_FIELD(kelmo_text, key, 56, 16);
KELMO_FIELD(kelmo_text, file, 72, 16);

KELMO_SIZE(kelmo_number_format, 72);
KELMO_FIELD(kelmo_number_format, size, 0, 4);
KELMO_FIELD(kelmo_number_format, is_grouped, 4, 4);
KELMO_FIELD(kelmo_number_format, group_size, 8, 4);
KELMO_FIELD(kelmo_number_format, further_group_size, 12, 4);
KELMO_FIELD(kelmo_number_format, minimum_first_group, 16, 4);
KELMO_FIELD(kelmo_number_format, zero_digit, 20, 4);
KELMO_FIELD(kelmo_number_format, decimal_mark, 24, 16);
KELMO_FIELD(kelmo_number_format, group_mark, 40, 16);
KELMO_FIELD(kelmo_number_format, minus_sign, 56, 16);

KELMO_SIZE(kelmo_argument, 80);
KELMO_FIELD(kelmo_argument, size, 0, 4);
KELMO_FIELD(kelmo_argument, type, 4, 4);
KELMO_FIELD(kelmo_argument, is_count, 8, 4);
KELMO_FIELD(kelmo_argument, decimals, 12, 4);
KELMO_FIELD(kelmo_argument, name, 16, 16);
KELMO_FIELD(kelmo_argument, text, 32, 16);
KELMO_FIELD(kelmo_argument, integer, 48, 8);
KELMO_FIELD(kelmo_argument, number, 56, 8);
KELMO_FIELD(kelmo_argument, units, 64, 8);
KELMO_FIELD(kelmo_argument, quantity, 72, 8);

KELMO_SIZE(kelmo_view_options, 40);
KELMO_FIELD(kelmo_view_options, size, 0, 4);
KELMO_FIELD(kelmo_view_options, flags, 4, 4);
KELMO_FIELD(kelmo_view_options, missing, 8, 4);
KELMO_FIELD(kelmo_view_options, problem_limit, 12, 4);
KELMO_FIELD(kelmo_view_options, languages, 16, 8);
KELMO_FIELD(kelmo_view_options, language_count, 24, 8);
KELMO_FIELD(kelmo_view_options, numbers, 32, 8);

KELMO_SIZE(kelmo_unit, 64);
KELMO_FIELD(kelmo_unit, size, 0, 4);
KELMO_FIELD(kelmo_unit, code, 4, 4);
KELMO_FIELD(kelmo_unit, kind, 8, 4);
KELMO_FIELD(kelmo_unit, difference, 12, 4);
KELMO_FIELD(kelmo_unit, factor, 16, 8);
KELMO_FIELD(kelmo_unit, offset, 24, 8);
KELMO_FIELD(kelmo_unit, symbol, 32, 16);
KELMO_FIELD(kelmo_unit, name, 48, 16);

KELMO_SIZE(kelmo_print_options, 16);
KELMO_FIELD(kelmo_print_options, size, 0, 4);
KELMO_FIELD(kelmo_print_options, flags, 4, 4);
KELMO_FIELD(kelmo_print_options, numbers, 8, 8);

KELMO_SIZE(kelmo_read_options, 40);
KELMO_FIELD(kelmo_read_options, size, 0, 4);
KELMO_FIELD(kelmo_read_options, kind, 4, 4);
KELMO_FIELD(kelmo_read_options, code, 8, 4);
KELMO_FIELD(kelmo_read_options, reserved, 12, 4);
KELMO_FIELD(kelmo_read_options, absolute_tolerance, 16, 8);
KELMO_FIELD(kelmo_read_options, relative_tolerance, 24, 8);
KELMO_FIELD(kelmo_read_options, numbers, 32, 8);

KELMO_HOLDS(sizeof(kelmo_status) == 4);
KELMO_HOLDS(KELMO_ZERO_TERMINATED == SIZE_MAX);
KELMO_VALUE(KELMO_SHORTEST, -1);
KELMO_VALUE(KELMO_MAX_DECIMALS, 99);
KELMO_VALUE(KELMO_OK, 0);
KELMO_VALUE(KELMO_NOT_FOUND, 1);
KELMO_VALUE(KELMO_INVALID_ARGUMENT, -1);
KELMO_VALUE(KELMO_OUT_OF_MEMORY, -2);
KELMO_VALUE(KELMO_CANNOT_READ, -3);
KELMO_VALUE(KELMO_INVALID_UTF8, -4);
KELMO_VALUE(KELMO_PROBLEM_KEY_REPEATED, 101);
KELMO_VALUE(KELMO_PROBLEM_CANNOT_READ, 111);
KELMO_VALUE(KELMO_PROBLEM_UNKNOWN_LANGUAGE, 112);
KELMO_VALUE(KELMO_PROBLEM_KEY_MISSING, 121);
KELMO_VALUE(KELMO_PROBLEM_NOT_UTF8, 201);
KELMO_VALUE(KELMO_PROBLEM_BYTE_ORDER_MARK, 202);
KELMO_VALUE(KELMO_PROBLEM_EMPTY_FILE, 203);
KELMO_VALUE(KELMO_PROBLEM_CONTROL_Z, 204);
KELMO_VALUE(KELMO_PROBLEM_LINE_BREAK, 205);
KELMO_VALUE(KELMO_PROBLEM_NO_LANGUAGE_ID, 206);
KELMO_VALUE(KELMO_PROBLEM_EMPTY_FOLDER, 207);
KELMO_VALUE(KELMO_PROBLEM_NO_LANGUAGE, 208);
KELMO_VALUE(KELMO_PROBLEM_OVERRIDES_NOTHING, 209);
KELMO_VALUE(KELMO_PROBLEM_PLACEHOLDER, 211);
KELMO_VALUE(KELMO_NOTE, 0);
KELMO_VALUE(KELMO_WARNING, 1);
KELMO_VALUE(KELMO_ERROR, 2);
KELMO_VALUE(KELMO_LOAD_LENIENT, 1);
KELMO_VALUE(KELMO_LOAD_UTF16, 2);
KELMO_VALUE(KELMO_LOAD_PERCENT, 4);
KELMO_VALUE(KELMO_LOAD_OVERRIDE, 8);
KELMO_VALUE(KELMO_LOAD_OPTIONAL, 16);
KELMO_VALUE(KELMO_LOAD_LINE_BREAKS, 32);
KELMO_VALUE(KELMO_ARGUMENT_TEXT, 1);
KELMO_VALUE(KELMO_ARGUMENT_INTEGER, 2);
KELMO_VALUE(KELMO_ARGUMENT_UNSIGNED, 3);
KELMO_VALUE(KELMO_ARGUMENT_NUMBER, 4);
KELMO_VALUE(KELMO_ARGUMENT_FLOAT, 5);
KELMO_VALUE(KELMO_MISSING_KEY, 0);
KELMO_VALUE(KELMO_MISSING_NOTHING, 1);
KELMO_VALUE(KELMO_MISSING_MARKED, 2);
KELMO_VALUE(KELMO_VIEW_ISOLATE, 1);
KELMO_VALUE(KELMO_UNKNOWN_UNIT, -5);
KELMO_VALUE(KELMO_DIFFERENT_KINDS, -6);
KELMO_VALUE(KELMO_POINT_UNIT, -7);
KELMO_VALUE(KELMO_CANNOT_ROUND, -8);
KELMO_VALUE(KELMO_AMBIGUOUS_UNIT, -9);
KELMO_VALUE(KELMO_INVALID_TEXT, -10);
KELMO_VALUE(KELMO_PROBLEM_UNIT, 221);
KELMO_VALUE(KELMO_PROBLEM_UNIT_REPEATED, 222);
KELMO_VALUE(KELMO_PROBLEM_UNIT_DROPPED, 223);
KELMO_VALUE(KELMO_PROBLEM_UNIT_NO_FACTOR, 224);
KELMO_VALUE(KELMO_PROBLEM_UNIT_DIFFERENCE, 225);
KELMO_VALUE(KELMO_PROBLEM_NAME_OF_NO_UNIT, 226);
KELMO_VALUE(KELMO_PROBLEM_CANNOT_READ_UNITS, 227);
KELMO_VALUE(KELMO_PROBLEM_NO_NUMBER, 231);
KELMO_VALUE(KELMO_PROBLEM_DECIMAL_MARK, 232);
KELMO_VALUE(KELMO_PROBLEM_GROUPS, 233);
KELMO_VALUE(KELMO_PROBLEM_NUMBER_RANGE, 234);
KELMO_VALUE(KELMO_PROBLEM_NO_UNIT, 235);
KELMO_VALUE(KELMO_PROBLEM_UNKNOWN_UNIT, 236);
KELMO_VALUE(KELMO_PROBLEM_AMBIGUOUS_UNIT, 237);
KELMO_VALUE(KELMO_PROBLEM_OTHER_KIND, 238);
KELMO_VALUE(KELMO_ARGUMENT_QUANTITY, 6);
KELMO_VALUE(KELMO_UNITS_NONE, 0);
KELMO_VALUE(KELMO_UNITS_BUILT_IN, 1);
KELMO_VALUE(KELMO_UNITS_AFTER_INIT, 2);
KELMO_VALUE(KELMO_UNITS_FILE, 0);
KELMO_VALUE(KELMO_UNITS_FOUR_FIELDS, 1);
KELMO_VALUE(KELMO_UNITS_NAMES, 2);
KELMO_VALUE(KELMO_PRINT_NAME, 1);
KELMO_VALUE(KELMO_PRINT_NUMBER, 2);
KELMO_VALUE(KELMO_PRINT_ALL_DIGITS, 4);
KELMO_VALUE(KELMO_PRINT_FINE, 8);
KELMO_VALUE(KELMO_FIRST_HOST_UNIT, 900);
KELMO_VALUE(KELMO_LAST_HOST_UNIT, 999);
KELMO_VALUE(KELMO_FIRST_HOST_KIND, 1000);
KELMO_VALUE(KELMO_LONGEST_UNIT_TEXT, 255);

#endif
