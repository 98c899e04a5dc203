// The process-wide objects are constructed and destroyed in a fixed order, on which hosts and other
// objects depend. Not a GoogleTest program: the check runs after main has returned.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame/library_state.h"

namespace {

// Unit catalogue, localized units, load messages, current language, dictionaries, error list.
constexpr char kConstructed[] = "+k+u+m+c+d+e";
constexpr char kWholeLife[] = "+k+u+m+c+d+e-e-d-c-m-u-k";

char events[sizeof(kWholeLife)] = "";

void ExpectEvents(const char* expected) noexcept {
  if (std::strcmp(events, expected) != 0) {
    std::printf("the order is %s and not %s\n", events, expected);
    std::fflush(stdout);
    std::_Exit(1);
  }
}

}  // namespace

void Record(char sign, char object) noexcept {
  const std::size_t length = std::strlen(events);
  events[length] = sign;
  events[length + 1] = object;
  if (length + 2 == std::strlen(kWholeLife)) {
    ExpectEvents(kWholeLife);
    std::printf("built and destroyed in their order\n");
  }
}

namespace KelmoLibs::Localize {

ErrorList::ErrorList() noexcept { Record('+', this == &loadMessages ? 'm' : 'e'); }

ErrorList::~ErrorList() { Record('-', this == &loadMessages ? 'm' : 'e'); }

}  // namespace KelmoLibs::Localize

int main() { ExpectEvents(kConstructed); }
