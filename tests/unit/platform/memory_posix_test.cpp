#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/memory.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kPageBytes = 4096;

// Number of these pages that are in physical memory.
std::size_t ResidentPages(std::byte* pages, std::size_t bytes) {
  std::vector<unsigned char> resident(bytes / kPageBytes);
  EXPECT_EQ(::mincore(pages, bytes, resident.data()), 0);
  return static_cast<std::size_t>(std::count_if(
      resident.begin(), resident.end(), [](unsigned char page) { return (page & 1U) != 0; }));
}

std::byte* MapPages(std::size_t bytes) {
  void* const mapped = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  EXPECT_NE(mapped, MAP_FAILED);
  return static_cast<std::byte*>(mapped);
}

// Whether this system can populate pages. Older systems cannot. QEMU ignores the call and reports
// success.
bool SystemPopulates() {
#ifdef MADV_POPULATE_WRITE
  std::byte* const page = MapPages(kPageBytes);
  const bool populates =
      ::madvise(page, kPageBytes, MADV_POPULATE_WRITE) == 0 && ResidentPages(page, kPageBytes) == 1;
  ::munmap(page, kPageBytes);
  return populates;
#else
  return false;
#endif
}

TEST(PrefaultPagesPosix, PopulatesOnlyTheWholePagesOfTheMemory) {
  constexpr std::size_t kPart = std::size_t{6} * 1024 * 1024;
  const bool populates = SystemPopulates();
  for (const std::size_t cut : {std::size_t{0}, std::size_t{1}}) {
    SCOPED_TRACE(cut);
    std::byte* const before = MapPages(3 * kPart);
    std::byte* const part = before + kPart;
    std::byte* const after = part + kPart;
    ::madvise(before, 3 * kPart,
              MADV_NOHUGEPAGE);  // a huge page could span two parts
    PrefaultPages(part + cut, kPart - 2 * cut);
    EXPECT_EQ(ResidentPages(before, kPart + cut * kPageBytes), 0U);
    EXPECT_EQ(ResidentPages(after - cut * kPageBytes, kPart + cut * kPageBytes), 0U);
    EXPECT_EQ(ResidentPages(part, kPart), populates ? kPart / kPageBytes - 2 * cut : 0);
    ::munmap(before, 3 * kPart);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
