/* Shows a text, if the library is there. Run it in the folder examples. */
#define KELMO_RUNTIME_IMPLEMENTATION /* in one source of the program */
#include <kelmo/kelmo_runtime.h>     /* in the place of kelmo.h */
#include <stdio.h>
#include <stdlib.h>

/* Ends the program at a failure. KELMO_NOT_FOUND, which is above 0, is none. */
static void check(kelmo_status status) {
  if (status < 0) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
    exit(1);
  }
}

static void print_text(void) {
  const kelmo_string german = {"de", 2};
  const kelmo_view_options options = {
      .size = sizeof options, .languages = &german, .language_count = 1};
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_folder(loader, "texts", KELMO_ZERO_TERMINATED, NULL, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  check(kelmo_view_create(texts, &options, &view, NULL));
  puts(kelmo_view_text(view, "pump.start", KELMO_ZERO_TERMINATED, NULL));
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
}

int main(void) {
  char reason[256];
  const kelmo_status opened = kelmo_runtime_open(KELMO_RUNTIME_FILE, reason, sizeof reason);
  if (opened != KELMO_OK) {
    printf("The program runs without texts: %s (%s)\n", kelmo_status_name(opened), reason);
    return 1;
  }
  print_text();
  kelmo_runtime_close(); /* after the last object is gone */
  return 0;
}
