// What the C functions check and pass on, where no test of a core module and no host shows it.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "kelmo/kelmo.h"
#include "tests/host/owned.h"

namespace {

constexpr std::size_t kZero = KELMO_ZERO_TERMINATED;
constexpr std::uint32_t kFirstArgument = 64;  // its size in the first version

class CApi : public testing::Test {
 protected:
  CApi() {
    kelmo_loader* loader = nullptr;
    EXPECT_EQ(kelmo_loader_create(&loader), KELMO_OK);
    const Owned<kelmo_loader> owner(loader);
    const std::string bytes =
        "de Deutsch\nn {0}\nfiles.one eine\nfiles.other viele\n" + long_ + " lang\n";
    EXPECT_EQ(kelmo_loader_add_memory(loader, bytes.data(), bytes.size(), "de.txt", kZero, nullptr,
                                      nullptr),
              KELMO_OK);
    kelmo_texts* texts = nullptr;
    EXPECT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
    texts_.reset(texts);
    options_.languages = &language_;
    options_.language_count = 1;
  }

  kelmo_status MakeView() {
    kelmo_view* view = nullptr;
    const kelmo_status status = kelmo_view_create(texts_.get(), &options_, &view, nullptr);
    EXPECT_EQ(status == KELMO_OK, view != nullptr);
    view_.reset(view);
    return status;
  }

  std::string_view TextOf(std::string_view key) const {
    std::size_t size = 0;
    const char* const text = kelmo_view_text(view_.get(), key.data(), key.size(), &size);
    return {text, size};
  }

  const std::string long_ = std::string(65, 'k');
  const kelmo_string language_ = {"de", 2};
  kelmo_view_options options_ = Sized<kelmo_view_options>();
  Owned<kelmo_texts> texts_;
  Owned<kelmo_view> view_;
};

TEST_F(CApi, ViewTextFindsKeysOfEveryLength) {
  ASSERT_EQ(MakeView(), KELMO_OK);
  EXPECT_EQ(TextOf("n"), "{0}");
  EXPECT_STREQ(kelmo_view_text(view_.get(), "n", kZero, nullptr), "{0}");
  EXPECT_STREQ(kelmo_view_text(view_.get(), "m", kZero, nullptr), "m");
  EXPECT_STREQ(kelmo_view_text(view_.get(), "n\001", kZero, nullptr), "n\001");
  std::size_t none = 9;
  EXPECT_STREQ(kelmo_view_text(view_.get(), "\0", kZero, &none), "");  // with a zero behind it
  EXPECT_EQ(none, 0U);
  EXPECT_EQ(TextOf(long_), "lang");
  EXPECT_STREQ(kelmo_view_text(view_.get(), long_.c_str(), kZero, nullptr), "lang");
  for (const std::size_t size : {64U, 66U, 1000U}) {
    const std::string key(size, 'k');
    EXPECT_EQ(TextOf(key), key);
  }
}

TEST_F(CApi, ViewFindGivesNoUtf16IfTheLoadDidNotAskForIt) {
  ASSERT_EQ(MakeView(), KELMO_OK);
  auto text = Sized<kelmo_text>();
  ASSERT_EQ(kelmo_view_find(view_.get(), "n", kZero, nullptr, &text), KELMO_OK);
  EXPECT_EQ(text.utf16, nullptr);
  EXPECT_EQ(text.utf16_size, 0U);
}

TEST_F(CApi, ViewCreateRefusesPoliciesThatItDoesNotKnow) {
  struct Case {
    std::int32_t missing;
    std::uint32_t flags;
    kelmo_status expected;
  };
  const Case cases[] = {
      {KELMO_MISSING_KEY, 0, KELMO_OK},
      {KELMO_MISSING_MARKED, KELMO_VIEW_ISOLATE, KELMO_OK},
      {KELMO_MISSING_KEY - 1, 0, KELMO_INVALID_ARGUMENT},
      {KELMO_MISSING_MARKED + 1, 0, KELMO_INVALID_ARGUMENT},
      {KELMO_MISSING_KEY, 2, KELMO_INVALID_ARGUMENT},
  };
  for (const Case& row : cases) {
    options_.missing = row.missing;
    options_.flags = row.flags;
    EXPECT_EQ(MakeView(), row.expected) << row.missing << ", " << row.flags;
  }
}

TEST_F(CApi, ViewCreateTakesTheFormatOfNumbers) {
  auto format = Sized<kelmo_number_format>();
  format.is_grouped = 1;
  format.group_size = 3;
  std::strcpy(format.group_mark, "'");
  options_.numbers = &format;
  ASSERT_EQ(MakeView(), KELMO_OK);
  const kelmo_argument number = kelmo_integer_argument(1234567);
  std::array<char, 40> buffer = {};
  EXPECT_EQ(kelmo_view_format(view_.get(), "n", kZero, &number, 1, buffer.data(), buffer.size(),
                              nullptr, nullptr),
            KELMO_OK);
  EXPECT_STREQ(buffer.data(), "1'234'567");

  std::strcpy(format.minus_sign, "\xFF");
  EXPECT_EQ(MakeView(), KELMO_INVALID_UTF8);
  format.size = sizeof format - 1;
  EXPECT_EQ(MakeView(), KELMO_INVALID_ARGUMENT);
}

TEST_F(CApi, ViewFindChecksTheCount) {
  struct Case {
    const char* name;
    kelmo_argument count;
    kelmo_status expected;
  };
  kelmo_argument small = kelmo_count_argument(1);
  small.size = kFirstArgument - 1;
  const Case cases[] = {
      {"a count", kelmo_count_argument(1), KELMO_OK},
      {"a number that is no count", kelmo_integer_argument(1), KELMO_OK},
      {"a struct that is too small", small, KELMO_INVALID_ARGUMENT},
      {"too many decimals", kelmo_number_argument(1, 100), KELMO_INVALID_ARGUMENT},
      {"a text", kelmo_text_argument("1"), KELMO_INVALID_ARGUMENT},
  };
  ASSERT_EQ(MakeView(), KELMO_OK);
  for (const Case& row : cases) {
    auto text = Sized<kelmo_text>();
    EXPECT_EQ(kelmo_view_find(view_.get(), "files", kZero, &row.count, &text), row.expected)
        << row.name;
    EXPECT_EQ(text.utf8 != nullptr, row.expected == KELMO_OK) << row.name;
  }
}

TEST_F(CApi, LoaderFinishTellsOverridesThatStandForNothing) {
  kelmo_problems* list = nullptr;
  kelmo_loader* loader = nullptr;
  ASSERT_EQ(kelmo_problems_create(&list), KELMO_OK);
  const Owned<kelmo_problems> listOwner(list);
  ASSERT_EQ(kelmo_loader_create(&loader), KELMO_OK);
  const Owned<kelmo_loader> loaderOwner(loader);
  auto own = Sized<kelmo_load_options>();
  own.flags = KELMO_LOAD_OVERRIDE;
  kelmo_texts* texts = nullptr;
  for (kelmo_problems* const problems : {static_cast<kelmo_problems*>(nullptr), list}) {
    kelmo_loader_add_memory(loader, "de\nfiles alle\n", kZero, "own.txt", kZero, &own, list);
    kelmo_loader_add_memory(loader, "de\nfiles.one eine\nfiles.other viele\n", kZero, "de.txt",
                            kZero, nullptr, list);
    EXPECT_EQ(kelmo_loader_finish(loader, nullptr, problems), KELMO_INVALID_ARGUMENT);
    EXPECT_EQ(kelmo_problems_count(list), 0U) << "a call that fails tells nothing";
    ASSERT_EQ(kelmo_loader_finish(loader, &texts, problems), KELMO_OK);
    const Owned<kelmo_texts> owner(texts);
    EXPECT_EQ(kelmo_problems_count(list), problems == nullptr ? 0U : 1U);
  }
  std::array<char, 200> line = {};
  EXPECT_EQ(kelmo_problems_print(list, 0, line.data(), line.size(), nullptr), KELMO_OK);
  EXPECT_STREQ(line.data(),
               "own.txt:2: warning: The text overrides no other text: the key has plural forms: "
               ".one, .other (key \"files\") (language \"de\")");
  auto problem = Sized<kelmo_problem>();
  EXPECT_EQ(kelmo_problems_get(list, 0, &problem), KELMO_OK);
  EXPECT_EQ(problem.code, KELMO_PROBLEM_OVERRIDES_NOTHING);
  EXPECT_EQ(problem.severity, KELMO_WARNING);
}

}  // namespace
