// Makes the fault that it is asked for, at which a build that looks for such faults must stop it.

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

volatile int many = 9;  // which no compiler knows
int* volatile lost = nullptr;

void Stopped(int /*signal*/) {
  std::_Exit(1);
}  // an abort is a failure to CTest, whatever is printed

int Make(const char* fault) {
  const auto asked = [fault](const char* name) { return std::strcmp(fault, name) == 0; };
  if (asked("address")) {
    const std::vector<int> numbers(8);
    const int* volatile first = numbers.data();  // of which no compiler knows how much is behind it
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
  std::signal(SIGABRT, Stopped);
  const int made = argumentCount > 1 ? Make(arguments[1]) : 0;
  std::printf("went on, with %d\n", made);
}
