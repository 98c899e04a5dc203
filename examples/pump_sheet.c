/* The sheet of a pump in two languages, then all problems. Run it in the folder examples. */
#include <kelmo/kelmo.h>
#include <stdio.h>
#include <stdlib.h>

/* Ends the program at a failure. KELMO_NOT_FOUND, which is above 0, is none. */
static void check(kelmo_status status) {
  if (status < 0) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
    exit(1);
  }
}

static void print_text(const kelmo_view* view, const char* key, const kelmo_argument* arguments,
                       size_t count) {
  char line[256] = "";
  size_t needed = 0;
  check(kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, count, line, sizeof line,
                          &needed, NULL));
  printf("%s%s\n", line, needed < sizeof line ? "" : "..."); /* cut, if it was too long */
}

static void print_one(const kelmo_view* view, const char* key, kelmo_argument argument) {
  print_text(view, key, &argument, 1);
}

static void print_two(const kelmo_view* view, const char* key, kelmo_argument first,
                      kelmo_argument second) {
  const kelmo_argument arguments[] = {first, second};
  print_text(view, key, arguments, 2);
}

static kelmo_argument text(const char* name, const char* value) {
  return kelmo_named_argument(name, kelmo_text_argument(value));
}

static kelmo_argument number(const char* name, double value) {
  return kelmo_named_argument(name, kelmo_number_argument(value, KELMO_SHORTEST));
}

static void print_sheet(const kelmo_view* view, const char* language) {
  print_text(view, "app.title", NULL, 0);
  print_one(view, "app.language", text("name", language));
  print_one(view, "sheet.pump", kelmo_text_argument("NP 50-200"));
  print_two(view, "sheet.customer", text("name", "Anna Berg"), text("city", "Åbo"));
  print_one(view, "sheet.stages", kelmo_count_argument(3));
  print_one(view, "sheet.speed", kelmo_integer_argument(2900));
  print_one(view, "sheet.efficiency", number(NULL, 78.46));
  print_two(view, "sheet.motor", number("power", 7.5), number("poles", 2));
  print_one(view, "sheet.seal", kelmo_text_argument("EPDM"));
  print_two(view, "sheet.flow", number("flow", 52.5), number("head", 48));
  print_two(view, "sheet.page", kelmo_integer_argument(1), kelmo_integer_argument(2));
  print_one(view, "sheet.weight", number(NULL, 84.5));
  puts("");
}

int main(void) {
  char line[512];
  kelmo_problems* problems = NULL;
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_language language = {.size = sizeof language};
  check(kelmo_problems_create(&problems));
  check(kelmo_loader_create(&loader));
  const kelmo_status status =
      kelmo_loader_add_folder(loader, "pump_sheet", KELMO_ZERO_TERMINATED, NULL, problems);
  if (status != KELMO_CANNOT_READ) { /* a problem tells the reason, and other files are loaded */
    check(status);
  }
  check(kelmo_loader_finish(loader, &texts, problems));
  for (size_t i = 0; kelmo_texts_language(texts, i, &language) == KELMO_OK; ++i) {
    const kelmo_string languages[] = {language.id, {"en", 2}};
    const kelmo_view_options options = {.size = sizeof options,
                                        .problem_limit = 100, /* records missing keys */
                                        .languages = languages,
                                        .language_count = 2};
    kelmo_view* view = NULL;
    size_t lost = 0;
    check(kelmo_view_create(texts, &options, &view, problems));
    print_sheet(view, language.name.data);
    check(kelmo_view_take_problems(view, problems, &lost)); /* before the view goes */
    if (lost != 0) {
      printf("Problems that were not recorded: %lu\n", (unsigned long)lost);
    }
    kelmo_view_release(view);
  }
  for (size_t i = 0; kelmo_problems_print(problems, i, line, sizeof line, NULL) == KELMO_OK; ++i) {
    puts(line);
  }
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  kelmo_problems_destroy(problems);
  return status == KELMO_OK ? 0 : 1;
}
