/* The sheet of a pump with its values, in two languages, and what users type. Run it in this folder. */
#include <kelmo/kelmo.h>
#include <stdio.h>
#include <stdlib.h>

#define Z KELMO_ZERO_TERMINATED

/* Codes of units/engineering.txt, and one of this program. */
enum { METRE = 10001, STAGE = 10900, TURN_PER_SECOND = 14001, TURN_PER_MINUTE = 14002 };
enum { PRESSURE = 17, KILOPASCAL = 17003, M3_PER_HOUR = 23003, LITRE_PER_MINUTE = 23006 };

static kelmo_units* the_units = NULL; /* the order of qsort takes no further argument */

/* Ends the program at a failure. KELMO_NOT_FOUND, which is above 0, is none. */
static void check(kelmo_status status) {
  if (status < 0) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
    exit(1);
  }
}

static kelmo_units* load_units(void) {
  const kelmo_unit stage = {/* 16 m: the head of one stage of this pump */
                            .size = sizeof stage,
                            .code = STAGE,
                            .factor = 16,
                            .symbol = {"st", 2},
                            .name = {"stage", 5}};
  kelmo_units_loader* loader = NULL;
  kelmo_units* units = NULL;
  check(kelmo_units_loader_create(KELMO_UNITS_NONE, &loader));
  check(kelmo_units_loader_add_file(loader, "../units/engineering.txt", Z, KELMO_UNITS_FILE, NULL));
  check(
      kelmo_units_loader_add_file(loader, "../units/LANG/de-val.txt", Z, KELMO_UNITS_NAMES, NULL));
  check(
      kelmo_units_loader_add_file(loader, "../units/LANG/en-val.txt", Z, KELMO_UNITS_NAMES, NULL));
  check(kelmo_units_loader_add(loader, &stage, NULL));
  check(kelmo_units_loader_finish(loader, &units, NULL));
  kelmo_units_loader_destroy(loader);
  return units;
}

static void print_text(const kelmo_view* view, const char* key, const kelmo_argument* arguments,
                       size_t count) {
  char line[256] = "";
  check(kelmo_view_format(view, key, Z, arguments, count, line, sizeof line, NULL, NULL));
  puts(line);
}

static void print_two(const kelmo_view* view, const char* key, kelmo_argument first,
                      kelmo_argument second) {
  const kelmo_argument arguments[] = {first, second};
  print_text(view, key, arguments, 2);
}

static kelmo_argument text(const char* name, const char* value) {
  return kelmo_named_argument(name, kelmo_text_argument(value));
}

static kelmo_argument value(const char* name, const kelmo_quantity* quantity) {
  return kelmo_named_argument(name, kelmo_quantity_argument(the_units, quantity));
}

/* A line with a quantity in two units. */
static void print_value(const kelmo_view* view, const char* key, const kelmo_quantity* quantity,
                        int32_t code) {
  kelmo_quantity converted;
  check(kelmo_quantity_convert(the_units, quantity, 1, code, &converted));
  print_two(view, key, value(NULL, quantity), value(NULL, &converted));
}

static void print_sheet(const kelmo_view* view) {
  const kelmo_quantity flow = kelmo_quantity_of(52.5, 0.05, 0, M3_PER_HOUR); /* known to 0.05 */
  const kelmo_quantity head = kelmo_quantity_of(48, 0.5, 0, METRE);
  const kelmo_quantity speed = kelmo_quantity_of(2900, 6, 0, TURN_PER_MINUTE);
  const kelmo_argument pump = kelmo_text_argument("NP 50-200");
  const kelmo_argument stages = kelmo_count_argument(3);
  print_text(view, "sheet.title", NULL, 0);
  print_text(view, "sheet.pump", &pump, 1);
  print_two(view, "sheet.customer", text("name", "Anna Berg"), text("city", "Åbo"));
  print_text(view, "sheet.stages", &stages, 1);
  print_value(view, "sheet.flow", &flow, LITRE_PER_MINUTE);
  print_value(view, "sheet.head", &head, STAGE);
  print_value(view, "sheet.speed", &speed, TURN_PER_SECOND);
  print_two(view, "sheet.duty", value("flow", &flow), value("head", &head));
}

static int order(const void* left, const void* right) {
  int32_t result = 0;
  check(kelmo_quantity_compare(the_units, left, right, &result));
  return result;
}

static void print_sorted(const kelmo_view* view) {
  static const char* const typed[] = {"4.7 bar", "1013 mbar", "35 psi", "300 kPa", "0.25 MPa"};
  kelmo_quantity pressures[5];
  char line[64] = "";
  for (size_t i = 0; i < 5; ++i) { /* without a view: the format of programs */
    check(kelmo_quantity_read(the_units, NULL, typed[i], Z, NULL, &pressures[i], NULL));
  }
  qsort(pressures, 5, sizeof pressures[0], order);
  print_text(view, "sheet.pressures", NULL, 0);
  for (size_t i = 0; i < 5; ++i) {
    check(kelmo_quantity_print(the_units, view, &pressures[i], NULL, line, sizeof line, NULL));
    printf("  %s\n", line);
  }
}

/* Prints what a user types, in kPa, or what is wrong with it. */
static void print_answer(const kelmo_view* view, const char* typed, kelmo_problems* problems) {
  const kelmo_read_options options = {.size = sizeof options, .kind = PRESSURE};
  kelmo_problem problem = {.size = sizeof problem};
  kelmo_quantity pressure;
  char key[24] = "";
  kelmo_problems_clear(problems);
  if (kelmo_quantity_read(the_units, view, typed, Z, &options, &pressure, problems) == KELMO_OK) {
    check(kelmo_quantity_convert(the_units, &pressure, 1, KILOPASCAL, &pressure));
    print_two(view, "typed.read", value(NULL, &pressure), text("typed", typed));
    return;
  }
  check(kelmo_problems_get(problems, 0, &problem)); /* fails if the read did for another reason */
  snprintf(key, sizeof key, "typed.%d", (int)problem.code);
  print_two(view, key, text("typed", typed),
            kelmo_named_argument("column", kelmo_integer_argument(problem.column)));
}

int main(void) {
  static const char* const typed[] = {"4,7 bar", "4.7 bar", "1 200 mbar", "5 barr", "5", "3 m"};
  static const kelmo_string languages[] = {{"de", 2}, {"en", 2}};
  kelmo_problems* problems = NULL;
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  the_units = load_units();
  check(kelmo_problems_create(&problems));
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_folder(loader, "pump_values", Z, NULL, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  for (size_t i = 0; i < 2; ++i) {
    const kelmo_view_options options = {
        .size = sizeof options, .languages = &languages[i], .language_count = 1};
    kelmo_view* view = NULL;
    check(kelmo_view_create(texts, &options, &view, NULL));
    print_sheet(view);
    print_sorted(view);
    for (size_t k = 0; k < sizeof typed / sizeof typed[0]; ++k) {
      print_answer(view, typed[k], problems);
    }
    puts("");
    kelmo_view_release(view);
  }
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  kelmo_problems_destroy(problems);
  kelmo_units_release(the_units);
  return 0;
}
