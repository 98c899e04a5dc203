/* What docs/kelmo.md shows in C: options, formats of numbers, texts of any length. */
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

/* A text of any length. The caller frees it; null: memory is out. */
static char* text_of(const kelmo_view* view, const char* key, const kelmo_argument* arguments,
                     size_t count) {
  size_t needed = 0;
  check(kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, count, NULL, 0, &needed,
                          NULL));
  char* const text = malloc(needed + 1);
  if (text != NULL) {
    check(kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, count, text, needed + 1,
                            NULL, NULL));
  }
  return text;
}

static void print_text(const kelmo_view* view, const char* key, kelmo_argument argument) {
  char* const text = text_of(view, key, &argument, 1);
  puts(text != NULL ? text : "");
  free(text);
}

static kelmo_view* view_with_options(void) {
  static const char dictionary[] = "de Deutsch\nprice Preis:\\n{0:.2f}\n";
  const kelmo_load_options load = {.size = sizeof load,
                                   .flags = KELMO_LOAD_LENIENT | KELMO_LOAD_LINE_BREAKS};
  const kelmo_string german = {"de", 2};
  kelmo_number_format format = {.size = sizeof format};
  const kelmo_view_options options = {.size = sizeof options,
                                      .missing = KELMO_MISSING_MARKED,
                                      .languages = &german,
                                      .language_count = 1,
                                      .numbers = &format};
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  check(kelmo_number_format_of_language("de-CH", KELMO_ZERO_TERMINATED, &format));
  format.is_grouped = 1;
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_memory(loader, dictionary, KELMO_ZERO_TERMINATED, "de.txt",
                                KELMO_ZERO_TERMINATED, &load, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  check(kelmo_view_create(texts, &options, &view, NULL)); /* copies the options */
  kelmo_texts_release(texts);                             /* the view keeps them alive */
  kelmo_loader_destroy(loader);
  return view;
}

int main(void) {
  kelmo_view* const view = view_with_options();
  print_text(view, "price", kelmo_number_argument(12345.5, KELMO_SHORTEST));
  print_text(view, "menu.file", kelmo_text_argument("none"));
  kelmo_view_release(view);
  return 0;
}
