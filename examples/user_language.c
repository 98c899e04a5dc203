/* Shows a text in the language of the user, or else in English. Run it in the folder examples. */
#include <kelmo/kelmo.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { CAPACITY = 8 };

/* Ends the program at a failure. KELMO_NOT_FOUND, which is above 0, is none. */
static void check(kelmo_status status) {
  if (status < 0) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
    exit(1);
  }
}

/* The id behind the others, unless it is among them. */
static void add(kelmo_string id, kelmo_string ids[CAPACITY], size_t* count) {
  for (size_t i = 0; i < *count; ++i) {
    if (strcmp(ids[i].data, id.data) == 0) {
      return;
    }
  }
  if (*count < CAPACITY) {
    ids[(*count)++] = id;
  }
}

/* The languages of the texts in which the user wants to read, and behind them English. Returns their
 * number. */
static size_t languages_for_user(const kelmo_texts* texts, kelmo_string ids[CAPACITY]) {
  const kelmo_string fallback = {"en", 2};
  kelmo_language language = {.size = sizeof language};
  char wanted[64];
  size_t needed = 0;
  size_t found = 0;
  size_t count = 0;
  for (size_t i = 0; kelmo_system_language(i, wanted, sizeof wanted, &needed) == KELMO_OK; ++i) {
    if (needed >= sizeof wanted) {
      continue; /* cut, and may be another id: "de" of "de-CH" */
    }
    for (size_t rank = 0;
         kelmo_texts_match_language(texts, wanted, KELMO_ZERO_TERMINATED, rank, &found) == KELMO_OK;
         ++rank) { /* "de-AT", and then "de" */
      check(kelmo_texts_language(texts, found, &language));
      add(language.id, ids, &count); /* lives as long as the texts */
    }
  }
  add(fallback, ids, &count);
  return count;
}

int main(void) {
  kelmo_string languages[CAPACITY];
  kelmo_view_options options = {.size = sizeof options, .languages = languages};
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_view* view = NULL;
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_folder(loader, "texts", KELMO_ZERO_TERMINATED, NULL, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  options.language_count = languages_for_user(texts, languages);
  check(kelmo_view_create(texts, &options, &view, NULL));
  for (size_t i = 0; i < options.language_count; ++i) {
    printf("%s\n", languages[i].data);
  }
  puts(kelmo_view_text(view, "pump.start", KELMO_ZERO_TERMINATED, NULL));
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  return 0;
}
