/* A host in C: loads two languages, looks texts up and prints all problems. */
#include <stdio.h>

#include "kelmo/kelmo.h"

static const char english[] =
    "en English\npump.start\tStart\npump.start\tGo\npump.stop\tStop\n"
    "pump.log\tWritten to {0}/{1}\n";
static const char german[] = "de Deutsch\npump.start\t\303\226ffnen\n";

static void print_text(const kelmo_view* view, const char* key) {
  kelmo_text text = {.size = sizeof text};
  const kelmo_status status = kelmo_view_find(view, key, KELMO_ZERO_TERMINATED, NULL, &text);
  if (status == KELMO_OK) {
    printf("%s: %s (%s:%u)\n", key, text.utf8, text.file.data, (unsigned)text.line);
  } else {
    printf("%s: %s\n", key, kelmo_status_name(status));
  }
}

static void print_filled(const kelmo_view* view, const char* key, const char* first,
                         const char* second) {
  const kelmo_argument arguments[] = {kelmo_text_argument(first), kelmo_text_argument(second)};
  char line[200] = "";
  kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, 2, line, sizeof line, NULL, NULL);
  printf("%s\n", line);
}

static void print_problems(const kelmo_problems* problems) {
  char line[200];
  size_t i = 0;
  for (i = 0; i < kelmo_problems_count(problems); ++i) {
    if (kelmo_problems_print(problems, i, line, sizeof line, NULL) == KELMO_OK) {
      printf("%s\n", line);
    }
  }
}

static kelmo_status run(kelmo_problems* problems, kelmo_loader* loader) {
  static const kelmo_string languages[] = {{"de", 2}, {"fr", 2}, {"en", 2}};
  kelmo_view_options options = {.size = sizeof options};
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  kelmo_status status = kelmo_loader_add_memory(loader, english, sizeof english - 1, "en.txt",
                                                KELMO_ZERO_TERMINATED, NULL, problems);
  if (status == KELMO_OK) {
    status = kelmo_loader_add_memory(loader, german, sizeof german - 1, "de.txt",
                                     KELMO_ZERO_TERMINATED, NULL, problems);
  }
  if (status == KELMO_OK) {
    status = kelmo_loader_finish(loader, &texts, problems);
  }
  options.languages = languages;
  options.language_count = 3;
  options.problem_limit = 10;
  if (status == KELMO_OK) {
    status = kelmo_view_create(texts, &options, &view, problems);
  }
  kelmo_texts_release(texts); /* the view owns them too */
  if (status == KELMO_OK) {
    print_text(view, "pump.start");
    print_text(view, "pump.stop");
    print_text(view, "pump.clean");
    print_filled(view, "pump.log", "logs", "pump.txt");
    status = kelmo_view_take_problems(view, problems, NULL);
  }
  kelmo_view_release(view);
  return status;
}

int main(void) {
  kelmo_problems* problems = NULL;
  kelmo_loader* loader = NULL;
  kelmo_status status = kelmo_problems_create(&problems);
  if (status == KELMO_OK) {
    status = kelmo_loader_create(&loader);
  }
  if (status == KELMO_OK) {
    status = run(problems, loader);
  }
  print_problems(problems);
  kelmo_loader_destroy(loader);
  kelmo_problems_destroy(problems);
  return status == KELMO_OK ? 0 : 1;
}
