#include "tests/model/library_under_test.h"

LibraryUnderTest::LibraryUnderTest()
    : library_(std::in_place), exports_(ExportsOf(*library_)), members_(MembersOf(*library_)) {}

LibraryUnderTest::~LibraryUnderTest() { library_->ReleaseReferencesOfStarts(starts_); }

std::optional<LibraryUnderTest::Inside> LibraryUnderTest::LookInside() const {
  return std::nullopt;
}
