#include "host/key_bytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace {

using KelmoLibs::Host::AreEqual;
using KelmoLibs::Host::HashOfKey;

constexpr std::size_t kLongest = 200;

// A key in memory of exactly its size, at any alignment: a sanitizer sees each byte too many that is
// read.
class ExactKey {
 public:
  explicit ExactKey(std::string_view key) : memory_(new char[key.size() + 1]), size_(key.size()) {
    std::char_traits<char>::copy(memory_.get() + 1, key.data(), size_);
  }
  std::string_view View() const { return {memory_.get() + 1, size_}; }

 private:
  std::unique_ptr<char[]> memory_;
  std::size_t size_;
};

std::string KeyOfSize(std::size_t size) {
  std::string key(size, '\0');
  for (std::size_t i = 0; i < size; ++i) {
    key[i] = static_cast<char>(i * 37 + 11);
  }
  return key;
}

TEST(KeyBytes, EqualKeysOfEverySizeAreEqualAndHaveOneHash) {
  for (std::size_t size = 0; size <= kLongest; ++size) {
    const std::string key = KeyOfSize(size);
    const ExactKey copy(key);
    EXPECT_TRUE(AreEqual(key.data(), copy.View().data(), size)) << size;
    EXPECT_EQ(HashOfKey(key), HashOfKey(copy.View())) << size;
  }
}

TEST(KeyBytes, EveryBitOfAKeyOfEverySizeCounts) {
  for (std::size_t size = 1; size <= kLongest; ++size) {
    const std::string key = KeyOfSize(size);
    for (std::size_t bit = 0; bit < 8 * size; ++bit) {
      std::string other = key;
      other[bit / 8] =
          static_cast<char>(static_cast<unsigned char>(other[bit / 8]) ^ (1U << bit % 8));
      ASSERT_FALSE(AreEqual(key.data(), other.data(), size)) << size << " bytes, bit " << bit;
      ASSERT_NE(HashOfKey(key), HashOfKey(other)) << size << " bytes, bit " << bit;
    }
  }
}

TEST(KeyBytes, KeysOfZeroesDifferByTheirSizeOnly) {
  std::set<std::uint64_t> hashes;
  for (std::size_t size = 0; size <= kLongest; ++size) {
    hashes.insert(HashOfKey(std::string(size, '\0')));
  }
  EXPECT_EQ(hashes.size(), kLongest + 1);
}

TEST(KeyBytes, TheEmptyKeyMayBeNull) {
  EXPECT_EQ(HashOfKey(std::string_view()), HashOfKey(""));
  EXPECT_TRUE(AreEqual(nullptr, "", 0));
}

// RecordTable uses the high 32 bits for the bucket and the low 7 for the tag.
TEST(KeyBytes, TheHashesOfNumberedKeysSpread) {
  constexpr int kKeys = 1 << 16;
  constexpr std::size_t kBuckets = 1 << 12;
  std::size_t keysOf[kBuckets] = {};
  std::size_t tags[128] = {};
  for (int i = 0; i < kKeys; ++i) {
    const std::uint64_t hash = HashOfKey("dialog.title." + std::to_string(i));
    ++keysOf[hash >> 52U];
    ++tags[hash & 0x7FU];
  }
  for (const std::size_t keys : keysOf) {  // 16 on average
    EXPECT_LT(keys, 48U);
  }
  for (const std::size_t keys : tags) {  // 512 on average
    EXPECT_GT(keys, 384U);
    EXPECT_LT(keys, 640U);
  }
}

}  // namespace
