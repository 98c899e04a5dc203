#include "host/loader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

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
  std::string Texts() { return Dump(loader_.Finish(nullptr)); }

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
  folder_.Write(L"-.txt", "en\nk hyphen\n");
  EXPECT_TRUE(loader_.AddFolder(top_, strict_, &problems_));
  EXPECT_EQ(Texts(), "en|\n" + PathOf("-.txt") + ":2 k=hyphen\nru|\n" +
                         PathOf("\xD0\xB0 \xD0\xB1.txt") + ":2 k=r\n");
  const std::string stays = " the text of " + PathOf("-.txt") + ":2 stays\n";
  EXPECT_EQ(Dump(problems_), "101 1 " + PathOf("Z.txt") + ":2:1 en k" + stays + "101 1 " +
                                 PathOf("a.txt") + ":2:1 en k" + stays + "101 1 " +
                                 PathOf("b.txt") + ":2:1 en k" + stays);
}

TEST_F(LoaderTest, LeavesOutWhatIsNoDictionary) {
  for (const wchar_t* const name : {L"en-val.txt", L"-val.txt", L"en.text", L"en.txt.bak", L"txt",
                                    L"en.TXT", L"entxt", L".txt", L"._en.txt"}) {
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
  EXPECT_FALSE(loader_.AddFolder(PathOf("en.txt"), optional, nullptr)) << "a file is there";
  EXPECT_FALSE(loader_.AddFolder(PathOf("en.txt/"), optional, nullptr)) << "a file is there";
  EXPECT_FALSE(loader_.AddFolder("", optional, nullptr)) << "a host forgot the path";
  EXPECT_FALSE(loader_.AddFile("", optional, nullptr)) << "a host forgot the path";
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
  EXPECT_EQ(Texts(), Dump(other.Finish(nullptr)));
}

TEST_F(LoaderTest, FinishTellsOverridesThatStandForNoText) {
  struct File {
    const char* name;  // overrides have names that begin with "own"
    const char* bytes;
  };
  struct Case {
    const char* name;
    std::vector<File> files;
    const char* told;
  };
  const std::vector<Case> cases = {
      // ---- what stands for another text
      {"the program has the key", {{"own", "en\nk o\n"}, {"a", "en\nk t\n"}}, ""},
      {"the program has the key and forms of it",
       {{"own", "en\nk o\n"}, {"a", "en\nk t\nk.other u\n"}},
       ""},
      {"a file in front of the override has it", {{"a", "en\nk t\n"}, {"own", "en\nk o\n"}}, ""},
      {"the second file of the program has it",
       {{"own", "en\nk o\n"}, {"a", "en\nl t\n"}, {"b", "en\nk t\n"}},
       ""},
      {"a plural form that the program has",
       {{"own", "en\nn.one o\n"}, {"a", "en\nn.one t\nn.other u\n"}},
       ""},
      // ---- what stands for none
      {"the program lacks the key",
       {{"own", "en\nk o\n\nl o\n"}, {"a", "en\nk t\n"}},
       "209 1 own:4:0 en l -\n"},
      {"all keys, in their order",
       {{"own1", "en\nl o\nk o\n"},
        {"own2", "de\nm o\n"},
        {"own3", "en\na o\n"},
        {"a", "en\n"},
        {"b", "de\n"}},
       "209 1 own1:2:0 en l -\n209 1 own1:3:0 en k -\n209 1 own2:2:0 de m -\n209 1 own3:2:0 en a "
       "-\n"},
      {"behind the program",
       {{"a", "en\nk t\n"}, {"own", "en\nl o\n"}, {"b", "en\nm t\n"}},
       "209 1 own:2:0 en l -\n"},
      {"only other overrides have it too: the text that stays is told",
       {{"own1", "en\nk o\n"}, {"own2", "en\nk p\n"}, {"a", "en\nl t\n"}},
       "209 1 own1:2:0 en k -\n"},
      {"twice in one file",
       {{"own", "en\nk o\nk p\n"}, {"a", "en\nl t\n"}},
       "209 1 own:2:0 en k -\n"},
      {"another language of the program has it: a customer completes a translation",
       {{"own", "en\nk o\n"}, {"a", "en\nl t\n"}, {"b", "de\nk t\n"}},
       ""},
      {"another language has forms of it",
       {{"own", "en\nk o\n"}, {"a", "en\nl t\n"}, {"b", "de\nk.one t\n"}},
       ""},
      {"another language has another form of it",
       {{"own", "en\nk.few o\n"}, {"a", "en\nl t\n"}, {"b", "de\nk.one t\n"}},
       ""},
      {"another language has it, its own has forms",
       {{"own", "en\nk o\n"}, {"a", "en\nk.one t\nk.other t\n"}, {"b", "de\nk t\n"}},
       "209 1 own:2:0 en k the key has plural forms: .one, .other\n"},
      {"forms without the one that fits every count",
       {{"own", "en\nk o\nl o\n"}, {"a", "en\nk.=0 t\nk.one t\nl.=1 t\n"}},
       ""},
      {"numbers that no count has",
       {{"own", "en\nn.=1.0 o\nn.=01 o\nn.= o\nn.=-0 o\nn.=-.1 o\n"}, {"a", "en\nn.other t\n"}},
       "209 1 own:2:0 en n.=1.0 -\n209 1 own:3:0 en n.=01 -\n209 1 own:4:0 en n.= -\n"
       "209 1 own:5:0 en n.=-0 -\n209 1 own:6:0 en n.=-.1 -\n"},
      // ---- a whole text where the program has forms
      {"a key with forms",
       {{"own", "en\nalarms o\n"}, {"a", "en\nalarms.one t\nalarms.other u\n"}},
       "209 1 own:2:0 en alarms the key has plural forms: .one, .other\n"},
      {"all forms that are looked for",
       {{"own", "ar\nn o\n"},
        {"a", "ar\nn.other\nn.many\nn.few\nn.two\nn.one\nn.zero\nn.=1\nn.=0\nn.=7\n"}},
       "209 1 own:2:0 ar n the key has plural forms: .=0, .=1, .zero, .one, .two, .few, .many, "
       ".other\n"},
      {"forms that the override has too",
       {{"own", "en\nn o\nn.one o\n"}, {"a", "en\nn.one t\nn.other u\n"}},
       "209 1 own:2:0 en n the key has plural forms: .one, .other\n"},
      {"forms that only overrides have are not named",
       {{"own", "en\nn o\nn.one o\n"}, {"a", "en\nk t\n"}},
       "209 1 own:2:0 en n -\n209 1 own:3:0 en n.one -\n"},
      // ---- a form that the program lacks
      {"of a key of the program",
       {{"own", "en\nn.one o\nn.=12 o\nn.=-1.5 o\n"}, {"a", "en\nn t\n"}},
       ""},
      {"beside other forms of the program",
       {{"own", "en\nn.=0 o\nn.few o\nn.=7 o\n"}, {"a", "en\nn.other t\n"}},
       ""},
      {"of a key that the program lacks",
       {{"own", "en\nn.one o\n.one o\n"}, {"a", "en\nm.one t\n"}},
       "209 1 own:2:0 en n.one -\n209 1 own:3:0 en .one -\n"},
      {"misspelt",
       {{"own", "en\nn.on o\nn.=x o\nn. o\nn.One o\n"}, {"a", "en\nn.one t\nn.other t\n"}},
       "209 1 own:2:0 en n.on -\n209 1 own:3:0 en n.=x -\n209 1 own:4:0 en n. -\n"
       "209 1 own:5:0 en n.One -\n"},
      // ---- languages
      {"a language that only overrides have",
       {{"own", "fr\nk o\nl o\n"}, {"a", "en\nk t\n"}},
       "209 1 own:3:0 fr l -\n"},
      {"a language of which the program has only the first line",
       {{"own", "en\nk o\n"}, {"a", "en\n"}},
       "209 1 own:2:0 en k -\n"},
      {"no program at all", {{"own", "en\nk o\n"}}, ""},
  };
  for (const Case& row : cases) {
    for (const File& file : row.files) {
      ReadingOptions options;
      options.isOverride = std::string(file.name).substr(0, 3) == "own";
      loader_.AddMemory(file.bytes, file.name, options, nullptr);
    }
    problems_.Clear();
    loader_.Finish(&problems_);
    EXPECT_EQ(Dump(problems_), row.told) << row.name;
    problems_.Clear();
    loader_.Finish(&problems_);
    EXPECT_EQ(Dump(problems_), "") << row.name << ": the loader is empty";
  }
}

TEST_F(LoaderTest, IsEmptyAfterItsEndAndCollectsAgain) {
  loader_.AddMemory("en\nk t\n", "1", strict_, &problems_);
  const auto first = loader_.Finish(nullptr);
  EXPECT_EQ(Dump(loader_.Finish(nullptr)), "");
  loader_.AddMemory("en\nk u\n", "2", strict_, &problems_);
  EXPECT_EQ(Texts(), "en|\n2:2 k=u\n");
  EXPECT_EQ(Dump(first), "en|\n1:2 k=t\n");
  EXPECT_EQ(Dump(problems_), "");
}

}  // namespace
