// gettext_host FOLDER KEY: prints the text of the key in the catalogue
// FOLDER/de/LC_MESSAGES/texts.mo.
#include <libintl.h>

#include <clocale>
#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  if (argc < 3) {
    return 1;
  }
  if (std::setlocale(LC_ALL, "") == nullptr || ::bindtextdomain("texts", argv[1]) == nullptr ||
      ::textdomain("texts") == nullptr) {
    return 1;
  }
  std::string line = "host: ";
  line += ::gettext(argv[2]);
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() ? 0 : 1;
}
