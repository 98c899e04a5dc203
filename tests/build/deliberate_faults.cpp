// Commits the fault that the argument names. An instrumented build must stop the program there.

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

volatile int many = 9;  // unknown to the compiler
int* volatile lost = nullptr;

// CTest counts an abort as a failure, whatever the program prints.
void OnAbort(int /*signal*/) { std::_Exit(1); }

int Commit(const char* fault) {
  const auto asked = [fault](const char* name) { return std::strcmp(fault, name) == 0; };
  if (asked("address")) {
    const std::vector<int> numbers(8);
    const int* volatile first = numbers.data();  // hides the size from the compiler
    return first[many];
  }
  if (asked("address_in_a_header")) {
    const std::vector<int> numbers(8);
    const int* volatile first = numbers.data();
    return static_cast<int>(std::count<const int*>(first, first + many, 5));
  }
  if (asked("leak")) {
    lost = new int[8];
    lost = nullptr;
  }
  if (asked("overflow")) {
    return INT_MAX - 8 + many;
  }
  if (asked("bounds")) {
    const int numbers[8] = {};
    return numbers[many];
  }
  if (asked("cast")) {
    return static_cast<int>(1e20 * many);
  }
  if (asked("conversion")) {
    const unsigned char byte = 100 * many;
    return byte;
  }
  if (asked("crash")) {
    return *lost;
  }
  if (asked("iterator")) {
    std::vector<int> numbers(8);
    const auto first = numbers.begin();
    numbers.resize(1000);
    return *first;
  }
  return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  std::signal(SIGABRT, OnAbort);
  const int result = argumentCount > 1 ? Commit(arguments[1]) : 0;
  std::printf("went on, with %d\n", result);
}
