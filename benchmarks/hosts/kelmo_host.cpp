// kelmo_host FOLDER KEY: prints the text of the key in the dictionary FOLDER/de.txt.
#include <cstdio>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/encode_utf8.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    return 1;
  }
  const std::string folderName = argv[1];
  const std::string keyName = argv[2];
  const std::wstring folder(folderName.begin(), folderName.end());
  const std::wstring key(keyName.begin(), keyName.end());

  Init0(folder.c_str());
  if (LoadDictionary(folder.c_str(), L"de.txt") < 0 || UseLanguage(L"de") != 0) {
    return 1;
  }
  std::string line = "host: ";
  line += EncodeUtf8(LANG(key.c_str()));
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() ? 0 : 1;
}
