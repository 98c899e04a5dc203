/* Lists the languages of a folder of dictionaries: list_languages FOLDER. The folder may have any name. */
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

/* `folder` is UTF-8. */
static void list_languages(const char* folder) {
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_language language = {.size = sizeof language};
  check(kelmo_loader_create(&loader));
  check(kelmo_loader_add_folder(loader, folder, KELMO_ZERO_TERMINATED, NULL, NULL));
  check(kelmo_loader_finish(loader, &texts, NULL));
  for (size_t i = 0; kelmo_texts_language(texts, i, &language) == KELMO_OK; ++i) {
    printf("%s: %s\n", language.id.data, language.name.data);
  }
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
}

#ifdef _WIN32
#include <windows.h>

/* The caller frees the result. Null: memory is out. */
static char* utf8_of(const wchar_t* wide) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, NULL, 0, NULL, NULL);
  char* const text = malloc((size_t)size);
  if (text != NULL) {
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, size, NULL, NULL);
  }
  return text;
}

int wmain(int count, wchar_t** arguments) {
  char* const folder = count == 2 ? utf8_of(arguments[1]) : NULL;
  if (folder == NULL) {
    return 1;
  }
  list_languages(folder);
  free(folder);
  return 0;
}
#else
int main(int count, char** arguments) {
  if (count != 2) {
    return 1;
  }
  list_languages(arguments[1]);
  return 0;
}
#endif
