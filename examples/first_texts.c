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
  char text[256] = "";
  check(kelmo_view_format(view, key, KELMO_ZERO_TERMINATED, arguments, count, text, sizeof text,
                          NULL, NULL));
  puts(text);
}

static void print_texts(const kelmo_view* view) {
  const kelmo_argument flow[] = {kelmo_named_argument("flow", kelmo_integer_argument(52)),
                                 kelmo_named_argument("head", kelmo_integer_argument(48))};
  const kelmo_argument alarms = kelmo_count_argument(3);
  const kelmo_argument service = kelmo_text_argument("2031-05-17");
  puts(kelmo_view_text(view, "pump.start", KELMO_ZERO_TERMINATED, NULL));
  print_text(view, "pump.flow", flow, 2);
  print_text(view, "alarms", &alarms, 1);
  print_text(view, "pump.service", &service, 1);
}

int main(void) {
  const kelmo_string languages[] = {{"de", 2}, {"en", 2}}; /* English where German lacks a text */
  const kelmo_view_options options = {
      .size = sizeof options, .languages = languages, .language_count = 2};
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_folder(loader, "texts", KELMO_ZERO_TERMINATED, NULL, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  check(kelmo_view_create(texts, &options, &view, NULL));
  print_texts(view);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  return 0;
}
