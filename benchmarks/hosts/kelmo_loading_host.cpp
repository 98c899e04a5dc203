// kelmo_loading_host FOLDER KEY LIBRARY: like kelmo_host, but loads the library at run time.
#include <dlfcn.h>

#include <cstdio>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/encode_utf8.h"

int main(int argc, char** argv) {
  if (argc < 4) {
    return 1;
  }
  const std::string folderName = argv[1];
  const std::string keyName = argv[2];
  const std::wstring folder(folderName.begin(), folderName.end());
  const std::wstring key(keyName.begin(), keyName.end());

  void* const library = ::dlopen(argv[3], RTLD_NOW);
  if (library == nullptr) {
    return 1;
  }
  const auto start = reinterpret_cast<decltype(&Init0)>(::dlsym(library, "Init0"));
  const auto load = reinterpret_cast<decltype(&LoadDictionary)>(::dlsym(library, "LoadDictionary"));
  const auto use = reinterpret_cast<decltype(&UseLanguage)>(::dlsym(library, "UseLanguage"));
  const auto textOf = reinterpret_cast<decltype(&LANG)>(::dlsym(library, "LANG"));
  if (start == nullptr || load == nullptr || use == nullptr || textOf == nullptr) {
    return 1;
  }
  start(folder.c_str());
  if (load(folder.c_str(), L"de.txt") < 0 || use(L"de") != 0) {
    return 1;
  }
  std::string line = "host: ";
  line += EncodeUtf8(textOf(key.c_str()));
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() ? 0 : 1;
}
