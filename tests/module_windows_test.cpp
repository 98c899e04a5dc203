// The references to the library's module, which only Windows counts in a way that hosts see.

#include <gtest/gtest.h>

#include "tests/support/host_test.h"

namespace {

TEST(Module, HasAReferenceMoreAfterEachStart) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nkey text\nkey again\n");
  for (const int starts : {1, 2, 7}) {
    SCOPED_TRACE(starts);
    {
      const LoadedLibrary library;
      const LibraryExports host = ExportsOf(library);
      ASSERT_EQ(host.LoadDictionary(folder.HostPath().c_str(), L"en.txt"), 1);
      const wchar_t* const text = host.LANG(L"key");
      for (int i = 0; i < starts; ++i) {
        const int result = i % 3 == 0   ? host.Init(L"no such folder", L"ru")
                           : i % 3 == 1 ? host.Init0(L"no such folder")
                                        : host.ExportPhyVal();
        EXPECT_EQ(result, 0);
      }
      // One reference for the load, one for each start. Until the last has gone, all is as it was.
      for (int i = 0; i < starts; ++i) {
        library.GiveBackReferencesOf(1);
        ASSERT_TRUE(LoadedLibrary::IsInProcess());
        EXPECT_EQ(host.GetErrorsCount(), 1);
        EXPECT_EQ(host.LANG(L"key"), text);
        EXPECT_STREQ(text, L"text");
        EXPECT_EQ(host.UseLanguage(L"en"), 0);
      }
    }
    ASSERT_FALSE(LoadedLibrary::IsInProcess());
  }
}

TEST(Module, StaysWhereItIsIfTheReferencesOfStartsAreNotGivenBack) {
  {
    const LoadedLibrary library;
    const LibraryExports host = ExportsOf(library);
    host.UseLanguage(L"none");
    host.Init0(L"no such folder");
    host.Init0(L"no such folder");
  }
  ASSERT_TRUE(LoadedLibrary::IsInProcess());
  {
    const LoadedLibrary again;
    EXPECT_EQ(ExportsOf(again).GetErrorsCount(), 1) << "the same one";
    again.GiveBackReferencesOf(2);
  }
  EXPECT_FALSE(LoadedLibrary::IsInProcess());
}

}  // namespace
