/* Lists the languages of a folder of dictionaries: list_languages FOLDER. The folder may have any name. */
#include <kelmo/kelmo.h>
#include <stdio.h>

/* `folder` is UTF-8. */
static int list_languages(const char* folder) {
  kelmo_loader* loader = NULL;
  kelmo_texts* texts = NULL;
  kelmo_language language = {.size = sizeof language};
  kelmo_loader_create(&loader);
  const kelmo_status status =
      kelmo_loader_add_folder(loader, folder, KELMO_ZERO_TERMINATED, NULL, NULL);
  kelmo_loader_finish(loader, &texts);
  for (size_t i = 0; kelmo_texts_language(texts, i, &language) == KELMO_OK; ++i) {
    printf("%s: %s\n", language.id.data, language.name.data);
  }
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  return status == KELMO_OK ? 0 : 1;
}

#ifdef _WIN32
#include <stdlib.h>
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
  const int status = folder != NULL ? list_languages(folder) : 1;
  free(folder);
  return status;
}
#else
int main(int count, char** arguments) { return count == 2 ? list_languages(arguments[1]) : 1; }
#endif
