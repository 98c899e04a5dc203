/* A host in plain C that uses kelmo from the load to the end: the header compiles as C99 and as C++
 * (c_host_in_cpp.cpp), and the built file keeps the contracts of the header. It writes its files to
 * the working folder. */

#include <stdio.h>
#include <string.h>

#include "kelmo/kelmo.h"

#define Z KELMO_ZERO_TERMINATED

static int failures = 0;

static void Expect(int holds, const char* what) {
  if (!holds) {
    printf("failed: %s\n", what);
    ++failures;
  }
}

static void ExpectStatus(kelmo_status status, kelmo_status expected, const char* what) {
  if (status != expected) {
    printf("failed: %s: %s instead of %s\n", what, kelmo_status_name(status),
           kelmo_status_name(expected));
    ++failures;
  }
}

static int Is(kelmo_string text, const char* expected) {
  return text.size == strlen(expected) && strcmp(text.data, expected) == 0;
}

/* ---- Structs with their size */

static kelmo_text EmptyText(void) {
  kelmo_text text;
  memset(&text, 0, sizeof text);
  text.size = (uint32_t)sizeof text;
  return text;
}

static kelmo_problem EmptyProblem(void) {
  kelmo_problem problem;
  memset(&problem, 0, sizeof problem);
  problem.size = (uint32_t)sizeof problem;
  return problem;
}

static kelmo_language EmptyLanguage(void) {
  kelmo_language language;
  memset(&language, 0, sizeof language);
  language.size = (uint32_t)sizeof language;
  return language;
}

static kelmo_unit EmptyUnit(void) {
  kelmo_unit unit;
  memset(&unit, 0, sizeof unit);
  unit.size = (uint32_t)sizeof unit;
  return unit;
}

static kelmo_load_options LoadOptions(uint32_t flags) {
  kelmo_load_options options;
  memset(&options, 0, sizeof options);
  options.size = (uint32_t)sizeof options;
  options.flags = flags;
  return options;
}

static kelmo_view_options ViewOptions(const kelmo_string* languages, size_t count) {
  kelmo_view_options options;
  memset(&options, 0, sizeof options);
  options.size = (uint32_t)sizeof options;
  options.languages = languages;
  options.language_count = count;
  return options;
}

/* ---- The texts that most parts use */

static const char kGerman[] = "de Deutsch\nok  Gut\nempty\nfile Datei\nfile zwei\n";
static const char kEnglish[] = "en English\nok OK\nonly.en x\n";
static const kelmo_string kLanguages[] = {{"de", 2}, {"en", Z}};

static kelmo_texts* LoadTexts(uint32_t flags) {
  const kelmo_load_options options = LoadOptions(flags);
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  ExpectStatus(kelmo_loader_create(&loader), KELMO_OK, "a loader");
  ExpectStatus(kelmo_loader_add_memory(loader, kGerman, Z, "de.txt", Z, &options, NULL), KELMO_OK,
               "German");
  ExpectStatus(
      kelmo_loader_add_memory(loader, kEnglish, strlen(kEnglish), "en.txt", 6, &options, NULL),
      KELMO_OK, "English");
  ExpectStatus(kelmo_loader_finish(loader, &texts, NULL), KELMO_OK, "finish");
  kelmo_loader_destroy(loader);
  return texts;
}

static kelmo_view* MakeView(kelmo_texts* texts, uint32_t limit) {
  kelmo_view_options options = ViewOptions(kLanguages, 2);
  kelmo_view* view = NULL;
  options.problem_limit = limit;
  ExpectStatus(kelmo_view_create(texts, &options, &view, NULL), KELMO_OK, "a view");
  return view;
}

/* ---- The units that most parts use */

#define METRE 10001
#define MILLIMETRE 10003
#define BAR 17007

static const char kUnits[] =
    "10000\t\t\tL\tlength\n10001\t1\t\tm\tmetre\n10003\t0.001\t\tmm\tmillimetre\n"
    "17007\t1e5\t\tbar\tbar\n";
static const char kGermanUnits[] = "de Deutsch\n10001\tm\tMeter\n";

static kelmo_units* LoadUnits(void) {
  kelmo_units_loader* loader = NULL;
  kelmo_units* units = NULL;
  ExpectStatus(kelmo_units_loader_create(KELMO_UNITS_NONE, &loader), KELMO_OK, "a loader of units");
  ExpectStatus(
      kelmo_units_loader_add_memory(loader, kUnits, Z, "units.txt", Z, KELMO_UNITS_FILE, NULL),
      KELMO_OK, "units");
  ExpectStatus(kelmo_units_loader_add_memory(loader, kGermanUnits, strlen(kGermanUnits), "de", 2,
                                             KELMO_UNITS_NAMES, NULL),
               KELMO_OK, "German names");
  ExpectStatus(kelmo_units_loader_finish(loader, &units, NULL), KELMO_OK, "finish the units");
  kelmo_units_loader_destroy(loader);
  return units;
}

/* ---- A walk through everything */

static void WriteFile(const char* name, const char* text) {
  FILE* const file = fopen(name, "wb");
  Expect(file != NULL && fputs(text, file) >= 0 && fclose(file) == 0, name);
}

static void LoadFiles(void) {
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_problems* problems = NULL;
  kelmo_problem problem = EmptyProblem();
  kelmo_language language = EmptyLanguage();
  char line[200];
  size_t needed = 0;
  size_t matched = 9;
  WriteFile("b.txt", kGerman);
  WriteFile("a.txt", kEnglish);
  WriteFile("b-val.txt", "no\n");
  ExpectStatus(kelmo_loader_create(&loader), KELMO_OK, "a loader");
  ExpectStatus(kelmo_problems_create(&problems), KELMO_OK, "a list");
  ExpectStatus(kelmo_loader_add_file(loader, "no such file", Z, NULL, problems), KELMO_CANNOT_READ,
               "no such file");
  ExpectStatus(kelmo_loader_add_file(loader, "b.txt and more", 5, NULL, problems), KELMO_OK,
               "a path with its size");
  ExpectStatus(kelmo_loader_add_folder(loader, ".", Z, NULL, problems), KELMO_OK, "a folder");
  ExpectStatus(kelmo_loader_add_folder(loader, "none", Z, NULL, problems), KELMO_CANNOT_READ,
               "no such folder");
  ExpectStatus(kelmo_loader_finish(loader, &texts, NULL), KELMO_OK, "finish");
  kelmo_loader_destroy(loader);

  Expect(kelmo_texts_language_count(texts) == 2, "two languages");
  ExpectStatus(kelmo_texts_language(texts, 0, &language), KELMO_OK, "the first language");
  Expect(Is(language.id, "de") && Is(language.name, "Deutsch") && language.entry_count == 3,
         "German is first");
  ExpectStatus(kelmo_texts_language(texts, 2, &language), KELMO_INVALID_ARGUMENT, "no third");
  ExpectStatus(kelmo_texts_match_language(texts, "de-AT", Z, 0, &matched), KELMO_OK,
               "German serves");
  Expect(matched == 0, "the first language matches");
  ExpectStatus(kelmo_texts_match_language(texts, "fr", Z, 0, &matched), KELMO_NOT_FOUND,
               "no French");
  ExpectStatus(kelmo_texts_match_language(texts, "\xFF", Z, 0, &matched), KELMO_INVALID_UTF8,
               "an id");

  /* no such file, file repeated, then in the folder all three again and file twice, no such folder */
  Expect(kelmo_problems_count(problems) == 7, "seven problems");
  Expect(kelmo_problems_lost(problems) == 0, "none is lost");
  ExpectStatus(kelmo_problems_get(problems, 0, &problem), KELMO_OK, "the first problem");
  Expect(problem.code == KELMO_PROBLEM_CANNOT_READ && problem.severity == KELMO_ERROR &&
             problem.line == 0 && problem.column == 0 && Is(problem.file, "no such file") &&
             Is(problem.sentence, "EL111. Dictionary file not found") && problem.detail.size > 0 &&
             Is(problem.key, "") && Is(problem.language, ""),
         "the first problem is the missing file");
  ExpectStatus(kelmo_problems_get(problems, 1, &problem), KELMO_OK, "the second problem");
  Expect(problem.code == KELMO_PROBLEM_KEY_REPEATED && problem.severity == KELMO_WARNING &&
             problem.line == 5 && problem.column == 1 && Is(problem.file, "b.txt") &&
             Is(problem.key, "file") && Is(problem.language, "de") &&
             Is(problem.detail, "the text of b.txt:4 stays"),
         "the second problem is the repeated key");
  ExpectStatus(kelmo_problems_print(problems, 1, line, sizeof line, &needed), KELMO_OK, "print");
  Expect(strcmp(line,
                "b.txt:5:1: warning: EL101. Key already declared. (the text of b.txt:4 stays) "
                "(key \"file\") (language \"de\")") == 0 &&
             needed == strlen(line),
         "the line for people");
  ExpectStatus(kelmo_problems_print(problems, 1, line, 9, &needed), KELMO_OK, "print cut");
  Expect(strcmp(line, "b.txt:5:") == 0 && needed > 9, "as much as there is room for");
  ExpectStatus(kelmo_problems_print(problems, 1, line, 1, NULL), KELMO_OK, "print nothing");
  Expect(line[0] == '\0', "only the zero");
  kelmo_problems_clear(problems);
  Expect(kelmo_problems_count(problems) == 0, "the list is empty");
  kelmo_problems_destroy(problems);
  kelmo_texts_release(texts);
  remove("a.txt");
  remove("b.txt");
  remove("b-val.txt");
}

static void FindTexts(void) {
  kelmo_texts* const texts = LoadTexts(KELMO_LOAD_UTF16);
  kelmo_view* const view = MakeView(texts, 10);
  kelmo_text text = EmptyText();
  kelmo_problems* problems = NULL;
  kelmo_problem problem = EmptyProblem();
  size_t size = 99;
  Expect(kelmo_view_texts(view) == texts, "the texts of the view");
  kelmo_texts_release(texts); /* the view keeps them */

  ExpectStatus(kelmo_view_find(view, "ok", Z, NULL, &text), KELMO_OK, "a key");
  Expect(text.utf8_size == 3 && strcmp(text.utf8, "Gut") == 0 && text.utf16_size == 3 &&
             text.utf16 != NULL && text.utf16[0] == 'G' && text.utf16[3] == 0 && text.line == 2 &&
             Is(text.language, "de") && Is(text.key, "ok") && Is(text.file, "de.txt"),
         "the text of the first language and its origin");
  ExpectStatus(kelmo_view_find(view, "only.en and more", 7, NULL, &text), KELMO_OK, "by size");
  Expect(Is(text.language, "en") && strcmp(text.utf8, "x") == 0, "the next language");
  ExpectStatus(kelmo_view_find(view, "empty", Z, NULL, &text), KELMO_OK, "an empty text");
  Expect(text.utf8_size == 0 && *text.utf8 == '\0' && text.utf16_size == 0 && *text.utf16 == 0,
         "is found");
  ExpectStatus(kelmo_view_find(view, "none", Z, NULL, &text), KELMO_NOT_FOUND, "a missing key");
  Expect(Is(text.key, "empty"), "nothing has changed");
  Expect(strcmp(kelmo_view_text(view, "file", Z, &size), "Datei") == 0 && size == 5, "the text");
  Expect(strcmp(kelmo_view_text(view, "none", Z, &size), "none") == 0 && size == 4, "the key");

  ExpectStatus(kelmo_texts_entry(kelmo_view_texts(view), 0, 2, &text), KELMO_OK, "an entry");
  Expect(Is(text.key, "file") && text.line == 4 && Is(text.language, "de"), "in the file's order");
  ExpectStatus(kelmo_texts_entry(kelmo_view_texts(view), 0, 3, &text), KELMO_INVALID_ARGUMENT,
               "no fourth entry");
  ExpectStatus(kelmo_texts_entry(kelmo_view_texts(view), 2, 0, &text), KELMO_INVALID_ARGUMENT,
               "no third language");

  ExpectStatus(kelmo_problems_create(&problems), KELMO_OK, "a list");
  ExpectStatus(kelmo_view_take_problems(view, problems, &size), KELMO_OK, "take");
  Expect(kelmo_problems_count(problems) == 1 && size == 0, "the missing key, once");
  ExpectStatus(kelmo_problems_get(problems, 0, &problem), KELMO_OK, "it");
  Expect(problem.code == KELMO_PROBLEM_KEY_MISSING && Is(problem.key, "none") &&
             Is(problem.sentence, "EL121. Key not found in dictionary"),
         "the missing key");
  kelmo_problems_destroy(problems);

  Expect(kelmo_view_retain(view) == view, "one owner more");
  kelmo_view_release(view);
  ExpectStatus(kelmo_view_find(view, "ok", Z, NULL, &text), KELMO_OK, "the view lives");
  Expect(kelmo_texts_retain(kelmo_view_texts(view)) == texts, "the texts have an owner more");
  kelmo_view_release(view);
  Expect(kelmo_texts_language_count(texts) == 2, "the texts live longer than the view");
  kelmo_texts_release(texts);
}

static void LoadUnitFiles(void) {
  kelmo_units_loader* loader = NULL;
  kelmo_units* units = NULL;
  kelmo_problems* problems = NULL;
  kelmo_problem problem = EmptyProblem();
  kelmo_unit unit = EmptyUnit();
  WriteFile("units.txt", kUnits);
  WriteFile("four.txt", "10009 0.3048 ft foot\n10010 x yd yard\n");
  WriteFile("de-val.txt", kGermanUnits);
  ExpectStatus(kelmo_problems_create(&problems), KELMO_OK, "a list");
  ExpectStatus(kelmo_units_loader_create(KELMO_UNITS_BUILT_IN, &loader), KELMO_OK, "a loader");
  ExpectStatus(kelmo_units_loader_add_file(loader, "no such file", Z, KELMO_UNITS_FILE, problems),
               KELMO_CANNOT_READ, "no such file of units");
  ExpectStatus(
      kelmo_units_loader_add_file(loader, "units.txt and more", 9, KELMO_UNITS_FILE, problems),
      KELMO_OK, "a path with its size");
  ExpectStatus(
      kelmo_units_loader_add_file(loader, "four.txt", Z, KELMO_UNITS_FOUR_FIELDS, problems),
      KELMO_OK, "four fields");
  ExpectStatus(kelmo_units_loader_add_file(loader, "de-val.txt", Z, KELMO_UNITS_NAMES, problems),
               KELMO_OK, "names");
  unit.code = 10900;
  unit.factor = 0.25;
  unit.symbol.data = "HM and more";
  unit.symbol.size = 2;
  ExpectStatus(kelmo_units_loader_add(loader, &unit, problems), KELMO_OK, "a unit of the host");
  unit.factor = 0;
  ExpectStatus(kelmo_units_loader_add(loader, &unit, problems), KELMO_INVALID_ARGUMENT,
               "a unit without a factor");
  ExpectStatus(kelmo_units_loader_finish(loader, &units, problems), KELMO_OK, "finish");
  kelmo_units_loader_destroy(loader);

  ExpectStatus(kelmo_units_find(units, NULL, 10002, &unit), KELMO_OK, "the built-in inch");
  Expect(unit.factor == 0.0273, "an inch of the first library");
  ExpectStatus(kelmo_units_find(units, NULL, 10009, &unit), KELMO_OK, "the foot");
  Expect(unit.factor == 0.3048 && Is(unit.symbol, "ft") && Is(unit.name, "foot"), "four fields");
  ExpectStatus(kelmo_units_find(units, NULL, 10900, &unit), KELMO_OK, "the unit of the host");
  Expect(unit.kind == 10 && unit.factor == 0.25 && Is(unit.symbol, "HM") && Is(unit.name, ""),
         "all of it");

  Expect(kelmo_problems_count(problems) == 3, "three problems");
  ExpectStatus(kelmo_problems_get(problems, 0, &problem), KELMO_OK, "the first");
  Expect(problem.code == KELMO_PROBLEM_CANNOT_READ_UNITS && Is(problem.file, "no such file"),
         "the missing file");
  ExpectStatus(kelmo_problems_get(problems, 1, &problem), KELMO_OK, "the second");
  Expect(problem.severity == KELMO_ERROR && problem.line == 2 && Is(problem.file, "four.txt"),
         "the line that is not right");
  ExpectStatus(kelmo_problems_get(problems, 2, &problem), KELMO_OK, "the third");
  Expect(problem.code == KELMO_PROBLEM_UNIT && Is(problem.key, "10900"),
         "the unit without a factor");
  kelmo_problems_destroy(problems);
  kelmo_units_release(units);
  remove("units.txt");
  remove("four.txt");
  remove("de-val.txt");
}

static void FindUnits(void) {
  kelmo_units* const units = LoadUnits();
  kelmo_texts* const texts = LoadTexts(0);
  kelmo_view* const view = MakeView(texts, 0);
  kelmo_unit unit = EmptyUnit();
  double numbers[2] = {1, 2.5};
  Expect(kelmo_units_kind_count(units) == 2 && kelmo_units_count(units, 0) == 3 &&
             kelmo_units_count(units, 10) == 2 && kelmo_units_count(units, 11) == 0,
         "three units of two kinds");
  ExpectStatus(kelmo_units_kind(units, view, 0, &unit), KELMO_OK, "a kind");
  Expect(unit.code == 10000 && unit.kind == 10 && Is(unit.name, "length"), "the lengths");
  ExpectStatus(kelmo_units_at(units, view, 10, 1, &unit), KELMO_OK, "the second length");
  Expect(unit.code == MILLIMETRE && unit.kind == 10 && unit.difference == 0 &&
             unit.factor == 0.001 && unit.offset == 0 && Is(unit.symbol, "mm") &&
             Is(unit.name, "millimetre"),
         "all fields");
  ExpectStatus(kelmo_units_find(units, view, METRE, &unit), KELMO_OK, "a code");
  Expect(Is(unit.name, "Meter"), "in the language of the view");
  ExpectStatus(kelmo_units_find(units, view, 10002, &unit), KELMO_UNKNOWN_UNIT, "no such code");
  Expect(Is(unit.name, "Meter"), "nothing has changed");
  ExpectStatus(kelmo_units_find_text(units, view, 0, "Meter and more", 5, &unit, NULL), KELMO_OK,
               "a name");
  Expect(unit.code == METRE, "the metre");
  ExpectStatus(kelmo_units_find_text(units, view, 17, "mm", Z, &unit, NULL), KELMO_DIFFERENT_KINDS,
               "a length is no pressure");
  ExpectStatus(kelmo_units_convert(units, METRE, MILLIMETRE, numbers, 2, numbers), KELMO_OK,
               "numbers in their place");
  Expect(numbers[0] == 1000 && numbers[1] == 2500, "are converted");
  ExpectStatus(kelmo_units_convert(units, METRE, BAR, numbers, 2, numbers), KELMO_DIFFERENT_KINDS,
               "metre and bar");
  Expect(kelmo_units_retain(units) == units, "one owner more");
  kelmo_units_release(units);
  Expect(kelmo_units_count(units, 0) == 3, "the units live");
  kelmo_units_release(units);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
}

static void Compute(void) {
  kelmo_units* const units = LoadUnits();
  const kelmo_quantity metre = kelmo_quantity_of(1.5, 0.1, 0.25, METRE);
  const kelmo_quantity more = kelmo_quantity_of(500, 1, 0, MILLIMETRE);
  kelmo_quantity result = more;
  kelmo_quantity both[2];
  double ratio = 0;
  int32_t order = 9;
  uint64_t hash = 0;
  uint64_t same = 1;
  ExpectStatus(kelmo_quantity_add(units, &metre, &more, &result), KELMO_OK, "add");
  Expect(result.number == 2 && result.absolute_tolerance == 0.1 &&
             result.relative_tolerance == 0.25 && result.code == METRE && result.reserved == 0,
         "in the unit of the left one");
  ExpectStatus(kelmo_quantity_subtract(units, &result, &more, &result), KELMO_OK, "subtract");
  Expect(result.number == 1.5, "the difference, in the place of an operand");
  ExpectStatus(kelmo_quantity_multiply(units, &result, 4, &result), KELMO_OK, "multiply");
  Expect(result.number == 6, "the product");
  ExpectStatus(kelmo_quantity_divide(units, &result, 3, &result), KELMO_OK, "divide");
  Expect(result.number == 2, "the quotient");
  ExpectStatus(kelmo_quantity_ratio(units, &result, &more, &ratio), KELMO_OK, "ratio");
  Expect(ratio == 4, "the ratio");
  both[0] = metre;
  both[1] = more;
  ExpectStatus(kelmo_quantity_sum(units, both, 2, &result), KELMO_OK, "sum");
  Expect(result.number == 2 && result.code == METRE, "the sum");
  ExpectStatus(kelmo_quantity_compare(units, &metre, &more, &order), KELMO_OK, "compare");
  Expect(order == 1, "1.5 m is above 500 mm");
  ExpectStatus(kelmo_quantity_convert(units, both, 2, MILLIMETRE, both), KELMO_OK, "convert");
  Expect(both[0].number == 1500 && both[0].absolute_tolerance == 100 &&
             both[0].code == MILLIMETRE && both[1].number == 500,
         "both, in their place");
  ExpectStatus(kelmo_quantity_hash(units, &metre, &hash), KELMO_OK, "hash");
  ExpectStatus(kelmo_quantity_hash(units, both, &same), KELMO_OK, "hash of the same");
  Expect(hash == same, "equal quantities have equal hashes");
  result = kelmo_quantity_of(1234.5678, 0.01, 0, METRE);
  ExpectStatus(kelmo_quantity_round(units, &result, &ratio), KELMO_OK, "round");
  Expect(ratio == 1234.57, "as the tolerance says");
  result = kelmo_quantity_of(1, 0, 0, BAR);
  ExpectStatus(kelmo_quantity_add(units, &metre, &result, &result), KELMO_DIFFERENT_KINDS,
               "metre and bar");
  Expect(result.number == 1 && result.code == BAR, "nothing has changed");
  ExpectStatus(kelmo_quantity_round(units, &result, &ratio), KELMO_CANNOT_ROUND, "no tolerance");
  kelmo_units_release(units);
}

static void PrintAndRead(void) {
  kelmo_units* const units = LoadUnits();
  kelmo_texts* const texts = LoadTexts(0);
  kelmo_view* const view = MakeView(texts, 0);
  const kelmo_quantity length = kelmo_quantity_of(12.5, 0.1, 0, METRE);
  kelmo_quantity typed = length;
  kelmo_print_options print;
  kelmo_read_options read;
  kelmo_problems* problems = NULL;
  kelmo_problem problem = EmptyProblem();
  char buffer[20] = "";
  size_t needed = 0;
  memset(&print, 0, sizeof print);
  print.size = (uint32_t)sizeof print;
  print.flags = KELMO_PRINT_NAME;
  memset(&read, 0, sizeof read);
  read.size = (uint32_t)sizeof read;
  read.code = MILLIMETRE;
  ExpectStatus(kelmo_quantity_print(units, NULL, &length, NULL, buffer, sizeof buffer, &needed),
               KELMO_OK, "print");
  Expect(strcmp(buffer, "12.5\xC2\xA0m") == 0 && needed == 7, "with a no-break space");
  ExpectStatus(kelmo_quantity_print(units, view, &length, &print, buffer, sizeof buffer, &needed),
               KELMO_OK, "print the name");
  Expect(strcmp(buffer, "12,5\xC2\xA0Meter") == 0 && needed == 11, "in the language of the view");
  ExpectStatus(kelmo_quantity_print(units, view, &length, &print, buffer, 6, &needed), KELMO_OK,
               "print cut");
  Expect(strcmp(buffer, "12,5") == 0 && needed == 11, "never inside a character");

  ExpectStatus(kelmo_problems_create(&problems), KELMO_OK, "a list");
  ExpectStatus(kelmo_quantity_read(units, view, "2,25 m and more", 6, NULL, &typed, problems),
               KELMO_OK, "read");
  Expect(typed.number == 2.25 && typed.absolute_tolerance == 0.01 &&
             typed.relative_tolerance == 0 && typed.code == METRE && typed.reserved == 0,
         "with the tolerance of the last digit");
  ExpectStatus(kelmo_quantity_read(units, view, "7", Z, &read, &typed, problems), KELMO_OK,
               "read without a unit");
  Expect(typed.number == 7 && typed.code == MILLIMETRE, "in the unit of the options");
  ExpectStatus(kelmo_quantity_read(units, view, "3 furlong", Z, NULL, &typed, problems),
               KELMO_UNKNOWN_UNIT, "read an unknown unit");
  Expect(typed.number == 7, "nothing has changed");
  ExpectStatus(kelmo_problems_get(problems, 0, &problem), KELMO_OK, "why");
  Expect(kelmo_problems_count(problems) == 1 && problem.code == KELMO_PROBLEM_UNKNOWN_UNIT &&
             problem.column == 3,
         "the unit, with its column");
  kelmo_problems_destroy(problems);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_units_release(units);
}

/* ---- Every function with every pointer null in turn */

static void PassNull(void) {
  kelmo_texts* const texts = LoadTexts(0);
  kelmo_view* const view = MakeView(texts, 0);
  kelmo_loader* loader = NULL;
  kelmo_problems* problems = NULL;
  kelmo_texts* no_texts = NULL;
  kelmo_view* no_view = NULL;
  kelmo_problem problem = EmptyProblem();
  kelmo_language language = EmptyLanguage();
  kelmo_text text = EmptyText();
  const kelmo_load_options load_options = LoadOptions(0);
  kelmo_view_options options = ViewOptions(kLanguages, 2);
  const kelmo_string null_id = {NULL, 2};
  const kelmo_argument argument = kelmo_integer_argument(1);
  kelmo_number_format format;
  char buffer[50] = "";
  size_t size = 0;

#define REFUSES(call) ExpectStatus(call, KELMO_INVALID_ARGUMENT, #call)
#define ACCEPTS(call) ExpectStatus(call, KELMO_OK, #call)
  REFUSES(kelmo_problems_create(NULL));
  REFUSES(kelmo_loader_create(NULL));
  ACCEPTS(kelmo_problems_create(&problems));
  ACCEPTS(kelmo_loader_create(&loader));

  kelmo_problems_destroy(NULL);
  kelmo_problems_clear(NULL);
  kelmo_loader_destroy(NULL);
  kelmo_texts_release(NULL);
  kelmo_view_release(NULL);
  Expect(kelmo_problems_count(NULL) == 0 && kelmo_problems_lost(NULL) == 0, "no problems");
  Expect(kelmo_texts_retain(NULL) == NULL && kelmo_view_retain(NULL) == NULL, "no owner");
  Expect(kelmo_texts_language_count(NULL) == 0, "no language");
  Expect(kelmo_view_texts(NULL) == NULL, "no texts");

  ExpectStatus(kelmo_loader_add_file(loader, "none", Z, NULL, problems), KELMO_CANNOT_READ, "none");
  REFUSES(kelmo_problems_get(NULL, 0, &problem));
  REFUSES(kelmo_problems_get(problems, 0, NULL));
  REFUSES(kelmo_problems_get(problems, 1, &problem));
  REFUSES(kelmo_problems_get(problems, SIZE_MAX, &problem));
  REFUSES(kelmo_problems_print(NULL, 0, buffer, sizeof buffer, &size));
  REFUSES(kelmo_problems_print(problems, 0, NULL, 1, &size));
  REFUSES(kelmo_problems_print(problems, 1, buffer, sizeof buffer, &size));
  ACCEPTS(kelmo_problems_print(problems, 0, NULL, 0, &size));
  ACCEPTS(kelmo_problems_print(problems, 0, buffer, sizeof buffer, NULL));
  Expect(size > sizeof buffer - 1 && strlen(buffer) == sizeof buffer - 1, "cut to the buffer");

  REFUSES(kelmo_loader_add_file(NULL, "none", Z, &load_options, problems));
  REFUSES(kelmo_loader_add_file(loader, NULL, Z, &load_options, problems));
  REFUSES(kelmo_loader_add_file(loader, NULL, 1, &load_options, problems));
  ExpectStatus(kelmo_loader_add_file(loader, NULL, 0, NULL, NULL), KELMO_CANNOT_READ, "no path");
  REFUSES(kelmo_loader_add_folder(NULL, ".", Z, &load_options, problems));
  REFUSES(kelmo_loader_add_folder(loader, NULL, Z, &load_options, problems));
  REFUSES(kelmo_loader_add_folder(loader, NULL, 1, &load_options, problems));
  ExpectStatus(kelmo_loader_add_folder(loader, "none", Z, NULL, NULL), KELMO_CANNOT_READ, "none");
  REFUSES(kelmo_loader_add_memory(NULL, kGerman, Z, "de", Z, &load_options, problems));
  REFUSES(kelmo_loader_add_memory(loader, NULL, Z, "de", Z, &load_options, problems));
  REFUSES(kelmo_loader_add_memory(loader, NULL, 1, "de", Z, &load_options, problems));
  REFUSES(kelmo_loader_add_memory(loader, kGerman, Z, NULL, Z, &load_options, problems));
  REFUSES(kelmo_loader_add_memory(loader, kGerman, Z, NULL, 1, &load_options, problems));
  ACCEPTS(kelmo_loader_add_memory(loader, NULL, 0, NULL, 0, NULL, NULL));
  REFUSES(kelmo_loader_finish(NULL, &no_texts, problems));
  REFUSES(kelmo_loader_finish(loader, NULL, problems));

  REFUSES(kelmo_texts_language(NULL, 0, &language));
  REFUSES(kelmo_texts_language(texts, 0, NULL));
  REFUSES(kelmo_texts_language(texts, SIZE_MAX, &language));
  REFUSES(kelmo_texts_match_language(NULL, "de", Z, 0, &size));
  REFUSES(kelmo_texts_match_language(texts, NULL, 2, 0, &size));
  REFUSES(kelmo_texts_match_language(texts, NULL, Z, 0, &size));
  REFUSES(kelmo_texts_match_language(texts, "de", Z, 0, NULL));
  REFUSES(kelmo_texts_entry(NULL, 0, 0, &text));
  REFUSES(kelmo_texts_entry(texts, 0, 0, NULL));
  REFUSES(kelmo_texts_entry(texts, SIZE_MAX, 0, &text));
  REFUSES(kelmo_texts_entry(texts, 0, SIZE_MAX, &text));

  REFUSES(kelmo_number_print(NULL, NULL, buffer, sizeof buffer, &size));
  REFUSES(kelmo_number_print(NULL, &argument, NULL, 1, &size));
  ACCEPTS(kelmo_number_print(NULL, &argument, NULL, 0, &size));
  ACCEPTS(kelmo_number_print(NULL, &argument, buffer, sizeof buffer, NULL));
  Expect(size == 1 && strcmp(buffer, "1") == 0, "a number");

  memset(&format, 0, sizeof format);
  format.size = (uint32_t)sizeof format;
  REFUSES(kelmo_number_format_of_language(NULL, Z, &format));
  REFUSES(kelmo_number_format_of_language(NULL, 1, &format));
  REFUSES(kelmo_number_format_of_language("de", Z, NULL));
  REFUSES(kelmo_number_format_of_user(NULL));
  ExpectStatus(kelmo_number_format_of_language(NULL, 0, &format), KELMO_NOT_FOUND, "no language");
  ACCEPTS(kelmo_number_format_of_language("de", Z, &format));
  ACCEPTS(kelmo_number_print(&format, &argument, buffer, sizeof buffer, NULL));
  REFUSES(kelmo_system_language(0, NULL, 1, &size));
  ExpectStatus(kelmo_system_language(SIZE_MAX, NULL, 0, NULL), KELMO_NOT_FOUND, "no last language");

  REFUSES(kelmo_view_create(NULL, &options, &no_view, problems));
  REFUSES(kelmo_view_create(texts, &options, NULL, problems));
  options.languages = NULL;
  REFUSES(kelmo_view_create(texts, &options, &no_view, problems));
  options.languages = &null_id;
  options.language_count = 1;
  REFUSES(kelmo_view_create(texts, &options, &no_view, problems));
  Expect(no_view == NULL && no_texts == NULL, "a refused call sets no pointer");
  ACCEPTS(kelmo_view_create(texts, NULL, &no_view, NULL));
  ExpectStatus(kelmo_view_find(no_view, "ok", Z, NULL, &text), KELMO_NOT_FOUND,
               "a view without a language");
  kelmo_view_release(no_view);

  size = 99;
  Expect(*kelmo_view_text(NULL, "ok", Z, &size) == '\0' && size == 0, "no view: the empty text");
  size = 99;
  Expect(*kelmo_view_text(view, NULL, Z, &size) == '\0' && size == 0, "no key: the empty text");
  Expect(*kelmo_view_text(view, NULL, 0, &size) == '\0' && size == 0, "the empty key is missing");
  Expect(strcmp(kelmo_view_text(view, "ok", Z, NULL), "Gut") == 0, "without its size");
  REFUSES(kelmo_view_find(NULL, "ok", Z, NULL, &text));
  REFUSES(kelmo_view_find(view, NULL, Z, NULL, &text));
  REFUSES(kelmo_view_find(view, NULL, 1, NULL, &text));
  REFUSES(kelmo_view_find(view, "ok", Z, NULL, NULL));
  ExpectStatus(kelmo_view_find(view, NULL, 0, NULL, &text), KELMO_NOT_FOUND, "the empty key");
  REFUSES(kelmo_view_format(NULL, "ok", Z, &argument, 1, buffer, sizeof buffer, &size, problems));
  REFUSES(kelmo_view_format(view, NULL, Z, &argument, 1, buffer, sizeof buffer, &size, problems));
  REFUSES(kelmo_view_format(view, "ok", Z, NULL, 1, buffer, sizeof buffer, &size, problems));
  REFUSES(kelmo_view_format(view, "ok", Z, &argument, 1, NULL, 1, &size, problems));
  ACCEPTS(kelmo_view_format(view, "ok", Z, NULL, 0, NULL, 0, &size, NULL));
  ACCEPTS(kelmo_view_format(view, "ok", Z, &argument, 1, buffer, sizeof buffer, NULL, NULL));
  Expect(size == 3 && strcmp(buffer, "Gut") == 0, "a text without placeholders");
  REFUSES(kelmo_view_take_problems(NULL, problems, &size));
  ACCEPTS(kelmo_view_take_problems(view, NULL, &size));
  ACCEPTS(kelmo_view_take_problems(view, problems, NULL));
  Expect(kelmo_problems_count(problems) == 1, "refused calls have told nothing");

  kelmo_problems_destroy(problems);
  kelmo_loader_destroy(loader);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
}

static void PassNullForUnits(void) {
  kelmo_units* const units = LoadUnits();
  kelmo_units_loader* loader = NULL;
  kelmo_units* no_units = NULL;
  kelmo_unit unit = EmptyUnit();
  kelmo_quantity result = kelmo_quantity_of(1, 0.1, 0, METRE);
  const kelmo_quantity metre = result;
  const double one = 1;
  double number = 0;
  int32_t order = 0;
  uint64_t hash = 0;
  char buffer[20] = "";
  size_t size = 0;
  REFUSES(kelmo_units_loader_create(KELMO_UNITS_NONE, NULL));
  ACCEPTS(kelmo_units_loader_create(KELMO_UNITS_NONE, &loader));
  unit.code = METRE;
  unit.factor = 1;
  unit.symbol.data = "m";
  unit.symbol.size = Z;
  kelmo_units_loader_destroy(NULL);
  kelmo_units_release(NULL);
  Expect(kelmo_units_retain(NULL) == NULL, "no owner");
  Expect(kelmo_units_kind_count(NULL) == 0 && kelmo_units_count(NULL, 0) == 0, "no units");
  REFUSES(kelmo_units_loader_add(NULL, &unit, NULL));
  REFUSES(kelmo_units_loader_add(loader, NULL, NULL));
  ACCEPTS(kelmo_units_loader_add(loader, &unit, NULL));
  REFUSES(kelmo_units_loader_add_file(NULL, "units.txt", Z, KELMO_UNITS_FILE, NULL));
  REFUSES(kelmo_units_loader_add_file(loader, NULL, Z, KELMO_UNITS_FILE, NULL));
  REFUSES(kelmo_units_loader_add_memory(NULL, kUnits, Z, "units.txt", Z, KELMO_UNITS_FILE, NULL));
  REFUSES(kelmo_units_loader_add_memory(loader, NULL, Z, "units.txt", Z, KELMO_UNITS_FILE, NULL));
  REFUSES(kelmo_units_loader_add_memory(loader, kUnits, Z, NULL, Z, KELMO_UNITS_FILE, NULL));
  ACCEPTS(kelmo_units_loader_add_memory(loader, NULL, 0, NULL, 0, KELMO_UNITS_FILE, NULL));
  REFUSES(kelmo_units_loader_finish(NULL, &no_units, NULL));
  REFUSES(kelmo_units_loader_finish(loader, NULL, NULL));
  Expect(no_units == NULL, "a refused call sets no pointer");

  REFUSES(kelmo_units_kind(NULL, NULL, 0, &unit));
  REFUSES(kelmo_units_kind(units, NULL, 0, NULL));
  REFUSES(kelmo_units_kind(units, NULL, SIZE_MAX, &unit));
  ACCEPTS(kelmo_units_kind(units, NULL, 0, &unit));
  REFUSES(kelmo_units_at(NULL, NULL, 0, 0, &unit));
  REFUSES(kelmo_units_at(units, NULL, 0, 0, NULL));
  REFUSES(kelmo_units_at(units, NULL, 0, SIZE_MAX, &unit));
  ACCEPTS(kelmo_units_at(units, NULL, 0, 0, &unit));
  REFUSES(kelmo_units_find(NULL, NULL, METRE, &unit));
  REFUSES(kelmo_units_find(units, NULL, METRE, NULL));
  ACCEPTS(kelmo_units_find(units, NULL, METRE, &unit));
  REFUSES(kelmo_units_find_text(NULL, NULL, 0, "m", Z, &unit, NULL));
  REFUSES(kelmo_units_find_text(units, NULL, 0, NULL, Z, &unit, NULL));
  REFUSES(kelmo_units_find_text(units, NULL, 0, "m", Z, NULL, NULL));
  ACCEPTS(kelmo_units_find_text(units, NULL, 0, "m", Z, &unit, NULL));
  REFUSES(kelmo_units_convert(NULL, METRE, MILLIMETRE, &one, 1, &number));
  REFUSES(kelmo_units_convert(units, METRE, MILLIMETRE, NULL, 1, &number));
  REFUSES(kelmo_units_convert(units, METRE, MILLIMETRE, &one, 1, NULL));
  ACCEPTS(kelmo_units_convert(units, METRE, MILLIMETRE, NULL, 0, NULL));

#define REFUSES_NULL(function, left, right, result)                 \
  do {                                                              \
    REFUSES(kelmo_quantity_##function(NULL, left, right, result));  \
    REFUSES(kelmo_quantity_##function(units, NULL, right, result)); \
    REFUSES(kelmo_quantity_##function(units, left, right, NULL));   \
    ACCEPTS(kelmo_quantity_##function(units, left, right, result)); \
  } while (0)
  REFUSES_NULL(add, &metre, &metre, &result);
  REFUSES_NULL(subtract, &metre, &metre, &result);
  REFUSES_NULL(multiply, &metre, 2, &result);
  REFUSES_NULL(divide, &metre, 2, &result);
  REFUSES_NULL(ratio, &metre, &metre, &number);
  REFUSES_NULL(compare, &metre, &metre, &order);
  REFUSES_NULL(sum, &metre, 1, &result);
  REFUSES(kelmo_quantity_add(units, &metre, NULL, &result));
  REFUSES(kelmo_quantity_subtract(units, &metre, NULL, &result));
  REFUSES(kelmo_quantity_ratio(units, &metre, NULL, &number));
  REFUSES(kelmo_quantity_compare(units, &metre, NULL, &order));
  REFUSES(kelmo_quantity_sum(units, &metre, 0, &result));
  REFUSES(kelmo_quantity_hash(NULL, &metre, &hash));
  REFUSES(kelmo_quantity_hash(units, NULL, &hash));
  REFUSES(kelmo_quantity_hash(units, &metre, NULL));
  REFUSES(kelmo_quantity_convert(NULL, &metre, 1, MILLIMETRE, &result));
  REFUSES(kelmo_quantity_convert(units, NULL, 1, MILLIMETRE, &result));
  REFUSES(kelmo_quantity_convert(units, &metre, 1, MILLIMETRE, NULL));
  ACCEPTS(kelmo_quantity_convert(units, NULL, 0, MILLIMETRE, NULL));
  REFUSES(kelmo_quantity_round(NULL, &metre, &number));
  REFUSES(kelmo_quantity_round(units, NULL, &number));
  REFUSES(kelmo_quantity_round(units, &metre, NULL));
  REFUSES(kelmo_quantity_print(NULL, NULL, &metre, NULL, buffer, sizeof buffer, &size));
  REFUSES(kelmo_quantity_print(units, NULL, NULL, NULL, buffer, sizeof buffer, &size));
  REFUSES(kelmo_quantity_print(units, NULL, &metre, NULL, NULL, 1, &size));
  ACCEPTS(kelmo_quantity_print(units, NULL, &metre, NULL, NULL, 0, &size));
  ACCEPTS(kelmo_quantity_print(units, NULL, &metre, NULL, buffer, sizeof buffer, NULL));
  Expect(size == 6 && strcmp(buffer, "1.0\xC2\xA0m") == 0, "a quantity");
  REFUSES(kelmo_quantity_read(NULL, NULL, "1 m", Z, NULL, &result, NULL));
  REFUSES(kelmo_quantity_read(units, NULL, NULL, Z, NULL, &result, NULL));
  REFUSES(kelmo_quantity_read(units, NULL, "1 m", Z, NULL, NULL, NULL));
  ExpectStatus(kelmo_quantity_read(units, NULL, NULL, 0, NULL, &result, NULL), KELMO_INVALID_TEXT,
               "the empty text");
  kelmo_units_loader_destroy(loader);
  kelmo_units_release(units);
}

/* ---- Structs of other versions */

#define GROWN 24 /* bytes that a later version has more */

/* Calls with a struct that is one byte too small, then with one of a later version, whose further
 * bytes stay as they are. `call` uses `Grown.known`. */
#define TRY_SIZES(Type, call)                                                              \
  do {                                                                                     \
    union {                                                                                \
      Type known;                                                                          \
      unsigned char bytes[sizeof(Type) + GROWN];                                           \
    } grown;                                                                               \
    size_t i = 0;                                                                          \
    memset(grown.bytes, 0xA5, sizeof grown.bytes);                                         \
    grown.known.size = (uint32_t)sizeof(Type) - 1;                                         \
    ExpectStatus(call, KELMO_INVALID_ARGUMENT, #Type " too small");                        \
    for (i = sizeof grown.known.size; i < sizeof grown.bytes && grown.bytes[i] == 0xA5;) { \
      ++i;                                                                                 \
    }                                                                                      \
    Expect(i == sizeof grown.bytes, #Type " too small is unchanged");                      \
    grown.known.size = 0;                                                                  \
    ExpectStatus(call, KELMO_INVALID_ARGUMENT, #Type " of size 0");                        \
    grown.known.size = (uint32_t)sizeof grown.bytes;                                       \
    ExpectStatus(call, KELMO_OK, #Type " of a later version");                             \
    Expect(grown.known.size == sizeof grown.bytes, #Type " keeps its size");               \
    for (i = sizeof(Type); i < sizeof grown.bytes && grown.bytes[i] == 0xA5;) {            \
      ++i;                                                                                 \
    }                                                                                      \
    Expect(i == sizeof grown.bytes, #Type ": what is not known stays");                    \
  } while (0)

#define FIRST_ARGUMENT_SIZE 64 /* of kelmo_argument, before quantities */

static void PassOtherVersions(void) {
  kelmo_texts* const texts = LoadTexts(0);
  kelmo_units* const units = LoadUnits();
  kelmo_view* const view = MakeView(texts, 0);
  kelmo_loader* loader = NULL;
  kelmo_problems* problems = NULL;
  kelmo_view* other = NULL;
  kelmo_load_options load_options[4];
  kelmo_view_options options[2];
  kelmo_argument arguments[2];
  kelmo_text text = EmptyText();
  char buffer[20] = "";
  kelmo_problems_create(&problems);
  kelmo_loader_create(&loader);
  kelmo_loader_add_file(loader, "none", Z, NULL, problems);

  TRY_SIZES(kelmo_text, kelmo_view_find(view, "ok", Z, NULL, &grown.known));
  TRY_SIZES(kelmo_text, kelmo_texts_entry(texts, 0, 0, &grown.known));
  TRY_SIZES(kelmo_language, kelmo_texts_language(texts, 0, &grown.known));
  TRY_SIZES(kelmo_problem, kelmo_problems_get(problems, 0, &grown.known));
  TRY_SIZES(kelmo_number_format, kelmo_number_format_of_language("de", Z, &grown.known));
  TRY_SIZES(kelmo_unit, kelmo_units_find(units, NULL, METRE, &grown.known));
  kelmo_units_release(units);

  memset(load_options, 0xA5, sizeof load_options); /* behind the first one: a later version */
  load_options[0].flags = 0;
  load_options[0].size = (uint32_t)sizeof load_options[0] - 1;
  ExpectStatus(kelmo_loader_add_memory(loader, kGerman, Z, "x", Z, load_options, NULL),
               KELMO_INVALID_ARGUMENT, "load options too small");
  load_options[0].size = (uint32_t)sizeof load_options;
  ExpectStatus(kelmo_loader_add_memory(loader, kGerman, Z, "x", Z, load_options, NULL), KELMO_OK,
               "load options of a later version");
  load_options[0].flags = 64;
  ExpectStatus(kelmo_loader_add_memory(loader, kGerman, Z, "x", Z, load_options, NULL),
               KELMO_INVALID_ARGUMENT, "a flag that is not known");

  memset(options, 0xA5, sizeof options);
  options[0] = ViewOptions(kLanguages, 2);
  options[0].size = (uint32_t)sizeof options[0] - 1;
  ExpectStatus(kelmo_view_create(texts, options, &other, NULL), KELMO_INVALID_ARGUMENT,
               "view options too small");
  options[0].size = (uint32_t)sizeof options;
  ExpectStatus(kelmo_view_create(texts, options, &other, NULL), KELMO_OK,
               "view options of a later version");
  kelmo_view_release(other);
  options[0].flags = 0x80;
  ExpectStatus(kelmo_view_create(texts, options, &other, NULL), KELMO_INVALID_ARGUMENT,
               "a flag of a view that is not known");
  options[0].flags = 0;
  options[0].missing = 3;
  ExpectStatus(kelmo_view_create(texts, options, &other, NULL), KELMO_INVALID_ARGUMENT,
               "a choice for missing keys that is not known");

  memset(arguments, 0xA5, sizeof arguments);
  arguments[0] = kelmo_count_argument(1);
  arguments[0].size = FIRST_ARGUMENT_SIZE - 1;
  ExpectStatus(kelmo_view_find(view, "ok", Z, arguments, &text), KELMO_INVALID_ARGUMENT,
               "an argument too small");
  ExpectStatus(kelmo_number_print(NULL, arguments, buffer, sizeof buffer, NULL),
               KELMO_INVALID_ARGUMENT, "a number too small");
  ExpectStatus(kelmo_view_format(view, "ok", Z, arguments, 1, buffer, sizeof buffer, NULL, NULL),
               KELMO_INVALID_ARGUMENT, "an array of arguments too small");
  arguments[0].size = (uint32_t)sizeof arguments;
  ExpectStatus(kelmo_view_find(view, "ok", Z, arguments, &text), KELMO_OK,
               "an argument of a later version");
  ExpectStatus(kelmo_number_print(NULL, arguments, buffer, sizeof buffer, NULL), KELMO_OK,
               "a number of a later version");
  ExpectStatus(kelmo_view_format(view, "ok", Z, arguments, 1, buffer, sizeof buffer, NULL, NULL),
               KELMO_OK, "an array of arguments of a later version");

  kelmo_problems_destroy(problems);
  kelmo_loader_destroy(loader);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
}

/* ---- Unusual strings */

static void PassUnusualStrings(void) {
  static const char kBytes[] = "en\na\0b c\0d\nlong ";
  static const char kNotUtf8[] = "\xC3";
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  kelmo_view_options options;
  kelmo_number_format format;
  const kelmo_string ids[] = {{"en\0more", 2}, {"en\0more", 3}};
  const kelmo_string not_utf8 = {kNotUtf8, Z};
  kelmo_text text = EmptyText();
  kelmo_problems* problems = NULL;
  size_t size = 0;
  memset(&format, 0, sizeof format);
  format.size = (uint32_t)sizeof format;
  kelmo_problems_create(&problems);
  kelmo_loader_create(&loader);
  ExpectStatus(kelmo_loader_add_file(loader, kNotUtf8, Z, NULL, problems), KELMO_INVALID_UTF8,
               "a path that is not UTF-8");
  ExpectStatus(kelmo_loader_add_folder(loader, kNotUtf8, 1, NULL, problems), KELMO_INVALID_UTF8,
               "a folder that is not UTF-8");
  ExpectStatus(kelmo_loader_add_memory(loader, kBytes, Z, kNotUtf8, 1, NULL, problems),
               KELMO_INVALID_UTF8, "a name that is not UTF-8");
  ExpectStatus(kelmo_number_format_of_language(kNotUtf8, Z, &format), KELMO_INVALID_UTF8,
               "a language that is not UTF-8");
  ExpectStatus(kelmo_loader_add_file(loader, "a.txt\0b", 7, NULL, NULL), KELMO_CANNOT_READ,
               "a path with a zero inside");
  Expect(kelmo_problems_count(problems) == 0, "the status tells what is not UTF-8");
  ExpectStatus(
      kelmo_loader_add_memory(loader, kBytes, sizeof kBytes - 1, "a\0b", 3, NULL, problems),
      KELMO_OK, "bytes and a name with zeroes inside");
  ExpectStatus(kelmo_loader_finish(loader, &texts, NULL), KELMO_OK, "finish");

  options = ViewOptions(ids, 2);
  ExpectStatus(kelmo_view_create(texts, &options, &view, problems), KELMO_OK, "ids with zeroes");
  Expect(kelmo_problems_count(problems) == 1, "one of them is not known");
  ExpectStatus(kelmo_view_find(view, "a\0b", 3, NULL, &text), KELMO_OK, "a key with a zero inside");
  Expect(text.utf8_size == 3 && memcmp(text.utf8, "c\0d", 4) == 0 && text.key.size == 3 &&
             memcmp(text.key.data, "a\0b", 4) == 0 && text.file.size == 3 &&
             memcmp(text.file.data, "a\0b", 4) == 0,
         "everything with its zeroes");
  ExpectStatus(kelmo_view_find(view, "a\0b", Z, NULL, &text), KELMO_NOT_FOUND,
               "a key that ends at its zero");
  Expect(memcmp(kelmo_view_text(view, "a\0b", 3, &size), "c\0d", 4) == 0 && size == 3,
         "a text with a zero inside");

  options = ViewOptions(&not_utf8, 1);
  kelmo_view_release(view);
  view = NULL;
  ExpectStatus(kelmo_view_create(texts, &options, &view, problems), KELMO_INVALID_UTF8,
               "an id that is not UTF-8");
  Expect(view == NULL && kelmo_problems_count(problems) == 1, "nothing has changed");
  options = ViewOptions(kLanguages, SIZE_MAX / 2);
  ExpectStatus(kelmo_view_create(texts, &options, &view, problems), KELMO_OUT_OF_MEMORY,
               "more languages than there is memory");
  kelmo_problems_destroy(problems);
  kelmo_loader_destroy(loader);
  kelmo_texts_release(texts);
}

/* ---- The rest */

static void AskForNames(void) {
  static const struct {
    kelmo_status status;
    const char* name;
  } rows[] = {
      {KELMO_OK, "KELMO_OK"},
      {KELMO_NOT_FOUND, "KELMO_NOT_FOUND"},
      {KELMO_INVALID_ARGUMENT, "KELMO_INVALID_ARGUMENT"},
      {KELMO_OUT_OF_MEMORY, "KELMO_OUT_OF_MEMORY"},
      {KELMO_CANNOT_READ, "KELMO_CANNOT_READ"},
      {KELMO_INVALID_UTF8, "KELMO_INVALID_UTF8"},
      {KELMO_UNKNOWN_UNIT, "KELMO_UNKNOWN_UNIT"},
      {KELMO_DIFFERENT_KINDS, "KELMO_DIFFERENT_KINDS"},
      {KELMO_POINT_UNIT, "KELMO_POINT_UNIT"},
      {KELMO_CANNOT_ROUND, "KELMO_CANNOT_ROUND"},
      {KELMO_AMBIGUOUS_UNIT, "KELMO_AMBIGUOUS_UNIT"},
      {KELMO_INVALID_TEXT, "KELMO_INVALID_TEXT"},
      {2, "unknown status"},
      {-11, "unknown status"},
      {INT32_MIN, "unknown status"},
      {INT32_MAX, "unknown status"},
  };
  size_t i = 0;
  for (i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
    Expect(strcmp(kelmo_status_name(rows[i].status), rows[i].name) == 0, rows[i].name);
  }
  Expect(kelmo_version() == KELMO_VERSION, "the version");
}

int main(void) {
  AskForNames();
  LoadFiles();
  FindTexts();
  LoadUnitFiles();
  FindUnits();
  Compute();
  PrintAndRead();
  PassNull();
  PassNullForUnits();
  PassOtherVersions();
  PassUnusualStrings();
  if (failures == 0) {
    printf("host of kelmo: all calls succeed\n");
  }
  return failures;
}
