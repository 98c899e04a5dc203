#include "host/loader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/native_files.h"
#include "tests/host/text_dump.h"
#include "tests/support/scratch_folder.h"

namespace {

using KelmoLibs::Host::Loader;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::ReadingOptions;
using KelmoLibs::Localize::DescribeError;
using KelmoLibs::Localize::FileBytes;
using KelmoLibs::Localize::JoinNative;
using KelmoLibs::Localize::ReadFileAt;

std::string ReasonOf(const std::string& path) {
  FileBytes bytes;
  return DescribeError(ReadFileAt(path, bytes));
}

class LoaderTest : public testing::Test {
 protected:
  std::string PathOf(const std::string& name) const { return JoinNative(top_, name); }
  std::string Texts() { return Dump(loader_.Finish()); }

  const ScratchFolder folder_;
  const std::string top_ = folder_.Path().u8string();
  Loader loader_;
  ProblemList problems_;
  const ReadingOptions strict_{};
};

TEST_F(LoaderTest, ReadsAFolderInTheOrderOfTheBytesOfItsNames) {
  folder_.Write(L"b.txt", "en\nk b\n");
  folder_.Write(L"a.txt", "en\nk a\n");
  folder_.Write(L"Z.txt", "en\nk Z\n");
  folder_.Write(L"\u0430 \u0431.txt", "ru\nk r\n");
  folder_.Write(L".txt", "en\nk dot\n");
  EXPECT_TRUE(loader_.AddFolder(top_, strict_, &problems_));
  EXPECT_EQ(Texts(), "en|\n" + PathOf(".txt") + ":2 k=dot\nru|\n" +
                         PathOf("\xD0\xB0 \xD0\xB1.txt") + ":2 k=r\n");
  const std::string stays = " the text of " + PathOf(".txt") + ":2 stays\n";
  EXPECT_EQ(Dump(problems_), "101 1 " + PathOf("Z.txt") + ":2:1 en k" + stays + "101 1 " +
                                 PathOf("a.txt") + ":2:1 en k" + stays + "101 1 " +
                                 PathOf("b.txt") + ":2:1 en k" + stays);
}

TEST_F(LoaderTest, LeavesOutWhatIsNoDictionary) {
  for (const wchar_t* const name :
       {L"en-val.txt", L"-val.txt", L"en.text", L"en.txt.bak", L"txt", L"en.TXT", L"entxt"}) {
    folder_.Write(name, "no\nk t\n");
  }
  folder_.Write(L"folder.txt\\en.txt", "no\nk t\n");
  folder_.Write(L"en-val.txt.txt", "yes\nk t\n");
  folder_.Write(L"val.txt", "yes\nl t\n");
  EXPECT_TRUE(loader_.AddFolder(top_, strict_, &problems_));
  EXPECT_EQ(Texts(),
            "yes|\n" + PathOf("en-val.txt.txt") + ":2 k=t\n" + PathOf("val.txt") + ":2 l=t\n");
  EXPECT_EQ(Dump(problems_), "");
}

TEST_F(LoaderTest, TellsWhatCannotBeRead) {
  EXPECT_FALSE(loader_.AddFile(PathOf("none.txt"), strict_, &problems_));
  EXPECT_FALSE(loader_.AddFile(top_, strict_, &problems_));
  EXPECT_FALSE(loader_.AddFile("", strict_, &problems_));
  EXPECT_EQ(Dump(problems_), "111 2 " + PathOf("none.txt") + ":0:0 - - " +
                                 ReasonOf(PathOf("none.txt")) + "\n111 2 " + top_ + ":0:0 - - " +
                                 ReasonOf(top_) + "\n111 2 -:0:0 - - " + ReasonOf("") + "\n");
  problems_.Clear();
  EXPECT_FALSE(loader_.AddFolder(PathOf("none"), strict_, &problems_));
  ASSERT_EQ(problems_.All().size(), 1U);
  EXPECT_EQ(problems_.All().front().file, PathOf("none"));
  EXPECT_FALSE(problems_.All().front().detail.empty());
  EXPECT_FALSE(loader_.AddFile(PathOf("none.txt"), strict_, nullptr)) << "without a list";
  EXPECT_EQ(Texts(), "");
}

TEST_F(LoaderTest, LeavesOutOnlyAnOptionalFileThatDoesNotExist) {
  ReadingOptions optional;
  optional.isOptional = true;
  folder_.Write(L"en.txt", "en\nk t\n");
  EXPECT_TRUE(loader_.AddFile(PathOf("none.txt"), optional, &problems_));
  EXPECT_TRUE(loader_.AddFile(PathOf("none/none.txt"), optional, &problems_));
  EXPECT_TRUE(loader_.AddFile(PathOf("en.txt/none.txt"), optional, &problems_));
  EXPECT_TRUE(loader_.AddFolder(PathOf("none"), optional, &problems_));
  EXPECT_TRUE(loader_.AddFile(PathOf("en.txt"), optional, &problems_));
  EXPECT_EQ(Dump(problems_), "");
  EXPECT_FALSE(loader_.AddFile(top_, optional, &problems_)) << "a folder is there";
  EXPECT_EQ(Dump(problems_), "111 2 " + top_ + ":0:0 - - " + ReasonOf(top_) + "\n");
  EXPECT_EQ(Texts(), "en|\n" + PathOf("en.txt") + ":2 k=t\n");
}

TEST_F(LoaderTest, TellsThatAFolderHasNoDictionary) {
  EXPECT_TRUE(loader_.AddFolder(top_, strict_, nullptr)) << "without a list";
  EXPECT_TRUE(loader_.AddFolder(top_, strict_, &problems_));
  EXPECT_EQ(Dump(problems_), "207 1 " + top_ + ":0:0 - - -\n");
}

TEST_F(LoaderTest, RefusesAPathWithAZero) {
  folder_.Write(L"en.txt", "en\n");
  using namespace std::string_literals;
  EXPECT_FALSE(loader_.AddFile(PathOf("en.txt\0.txt"s), strict_, &problems_));
  EXPECT_FALSE(loader_.AddFolder(top_ + "\0"s, strict_, &problems_));
  EXPECT_EQ(Dump(problems_), "111 2 " + PathOf("en.txt\0.txt"s) +
                                 ":0:0 - - the path has a zero in it\n111 2 " + top_ +
                                 "\0:0:0 - - the path has a zero in it\n"s);
  EXPECT_EQ(Texts(), "");
}

TEST_F(LoaderTest, ReadsMemoryAsAFile) {
  const std::string bytes = "en A\nk t\nk u\n\xFF";
  folder_.Write(L"en.txt", bytes);
  Loader other;
  ProblemList others;
  EXPECT_TRUE(loader_.AddFile(PathOf("en.txt"), strict_, &problems_));
  other.AddMemory(bytes, PathOf("en.txt"), strict_, &others);
  EXPECT_EQ(Dump(problems_), Dump(others));
  EXPECT_EQ(others.All().size(), 2U);
  EXPECT_EQ(Texts(), Dump(other.Finish()));
}

TEST_F(LoaderTest, IsEmptyAfterItsEndAndCollectsAgain) {
  loader_.AddMemory("en\nk t\n", "1", strict_, &problems_);
  const auto first = loader_.Finish();
  EXPECT_EQ(Dump(loader_.Finish()), "");
  loader_.AddMemory("en\nk u\n", "2", strict_, &problems_);
  EXPECT_EQ(Texts(), "en|\n2:2 k=u\n");
  EXPECT_EQ(Dump(first), "en|\n1:2 k=t\n");
  EXPECT_EQ(Dump(problems_), "");
}

}  // namespace
