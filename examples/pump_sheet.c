/* The sheet of a pump in two languages, then all problems. Run it in the folder examples. */
#include <kelmo/kelmo.h>
#include <stdio.h>

static void print_line(const kelmo_view* view, const char* key, size_t count,
                       const kelmo_argument* arguments) {
  char line[256];
  if (kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, count, line, sizeof line, NULL,
                        NULL) >= KELMO_OK) {
    puts(line);
  }
}

static kelmo_argument text(const char* name, const char* value) {
  return kelmo_named_argument(name, kelmo_text_argument(value));
}

static kelmo_argument number(const char* name, double value) {
  return kelmo_named_argument(name, kelmo_number_argument(value, KELMO_SHORTEST));
}

static void print_sheet(const kelmo_view* view, const char* language) {
  print_line(view, "app.title", 0, NULL);
  print_line(view, "app.language", 1, (kelmo_argument[]){text("name", language)});
  print_line(view, "sheet.pump", 1, (kelmo_argument[]){kelmo_text_argument("NP 50-200")});
  print_line(view, "sheet.customer", 2,
             (kelmo_argument[]){text("name", "Anna Berg"), text("city", "Åbo")});
  print_line(view, "sheet.stages", 1, (kelmo_argument[]){kelmo_count_argument(3)});
  print_line(view, "sheet.speed", 1, (kelmo_argument[]){kelmo_integer_argument(2900)});
  print_line(view, "sheet.efficiency", 1, (kelmo_argument[]){number(NULL, 78.46)});
  print_line(view, "sheet.motor", 2, (kelmo_argument[]){number("power", 7.5), number("poles", 2)});
  print_line(view, "sheet.seal", 1, (kelmo_argument[]){kelmo_text_argument("EPDM")});
  print_line(view, "sheet.flow", 2, (kelmo_argument[]){number("flow", 52.5), number("head", 48)});
  print_line(view, "sheet.page", 2,
             (kelmo_argument[]){kelmo_integer_argument(1), kelmo_integer_argument(2)});
  print_line(view, "sheet.weight", 1, (kelmo_argument[]){number(NULL, 84.5)});
  puts("");
}

static kelmo_status print_in_language(kelmo_texts* texts, size_t index, kelmo_problems* problems) {
  kelmo_language language = {.size = sizeof language};
  kelmo_view* view = NULL;
  kelmo_status status = kelmo_texts_language(texts, index, &language);
  const kelmo_string languages[] = {language.id, {"en", 2}};
  const kelmo_view_options options = {.size = sizeof options,
                                      .problem_limit = 100, /* records missing keys */
                                      .languages = languages,
                                      .language_count = 2};
  if (status == KELMO_OK) {
    status = kelmo_view_create(texts, &options, &view, problems);
  }
  if (status == KELMO_OK) {
    print_sheet(view, language.name.data);
    status = kelmo_view_take_problems(view, problems, NULL);
  }
  kelmo_view_release(view);
  return status;
}

static void print_problems(const kelmo_problems* problems) {
  char line[512];
  for (size_t i = 0; i < kelmo_problems_count(problems); ++i) {
    if (kelmo_problems_print(problems, i, line, sizeof line, NULL) == KELMO_OK) {
      puts(line);
    }
  }
}

int main(void) {
  kelmo_problems* problems = NULL;
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_status status = kelmo_problems_create(&problems);
  if (status == KELMO_OK) {
    status = kelmo_loader_create(&loader);
  }
  if (status == KELMO_OK) {
    status = kelmo_loader_add_folder(loader, "pump_sheet", KELMO_ZERO_TERMINATED, NULL, problems);
  }
  if (status == KELMO_OK) {
    status = kelmo_loader_finish(loader, &texts);
  }
  for (size_t i = 0; status == KELMO_OK && i < kelmo_texts_language_count(texts); ++i) {
    status = print_in_language(texts, i, problems);
  }
  print_problems(problems);
  if (status != KELMO_OK) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
  }
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  kelmo_problems_destroy(problems);
  return status == KELMO_OK ? 0 : 1;
}
