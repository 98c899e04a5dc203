// bare_host TEXT: prints the text. The cost of a C++ process that uses no library.
#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  if (argc < 2) {
    return 1;
  }
  std::string line = "host: ";
  line += argv[1];
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() ? 0 : 1;
}
