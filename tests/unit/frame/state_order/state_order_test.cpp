// The process-wide objects are built and destroyed in their order: hosts and other objects rest on
// it. Not a test of a framework's: it ends when everything else has ended.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame/library_state.h"

namespace {

// Catalogue of units, localized units, their messages, current id, dictionaries, error list.
constexpr char kBuilt[] = "+k+u+m+c+d+e";
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

int main() { ExpectEvents(kBuilt); }
