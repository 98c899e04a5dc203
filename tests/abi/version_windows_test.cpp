// The version resources of the DLLs and of kelmo-lang.exe, which Windows shows to users.

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cwchar>
#include <string>
#include <vector>

namespace {

constexpr const wchar_t* kFiles[] = {
    L"kelmo_Mestrel_Localizer.dll",
    L"kelmo-0.dll",
#ifdef KELMO_HAS_LANG
    L"kelmo-lang.exe",
#endif
};

class VersionResource : public testing::TestWithParam<const wchar_t*> {
 protected:
  void SetUp() override {
    wchar_t program[MAX_PATH] = {};
    ASSERT_GT(::GetModuleFileNameW(nullptr, program, MAX_PATH), 0U);
    const std::wstring folder(program, std::wcsrchr(program, L'\\') + 1);
    const std::wstring path = folder + GetParam();
    block_.resize(::GetFileVersionInfoSizeW(path.c_str(), nullptr));
    ASSERT_FALSE(block_.empty()) << "no version resource";
    ASSERT_TRUE(
        ::GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block_.size()), block_.data()));
  }

  template <class Value>
  const Value* Query(const wchar_t* name) {
    void* value = nullptr;
    UINT length = 0;
    EXPECT_TRUE(::VerQueryValueW(block_.data(), name, &value, &length)) << "no such value";
    return static_cast<const Value*>(value);
  }

  // Uses the language that the resource names, as Windows does.
  std::wstring Text(const std::wstring& name) {
    const auto* const translation = Query<WORD>(L"\\VarFileInfo\\Translation");
    if (translation == nullptr) {
      return L"";
    }
    std::array<wchar_t, 9> block = {};
    std::swprintf(block.data(), block.size(), L"%04X%04X", translation[0], translation[1]);
    const auto* const text =
        Query<wchar_t>((L"\\StringFileInfo\\" + (block.data() + (L"\\" + name))).c_str());
    return text != nullptr ? text : L"";
  }

  std::vector<char> block_;
};

TEST_P(VersionResource, HoldsTheVersionOfTheProject) {
  const auto* const fixed = Query<VS_FIXEDFILEINFO>(L"\\");
  ASSERT_NE(fixed, nullptr);
  const auto number = [](DWORD high, DWORD low) {
    return std::to_string(HIWORD(high)) + "." + std::to_string(LOWORD(high)) + "." +
           std::to_string(HIWORD(low)) + "." + std::to_string(LOWORD(low));
  };
  EXPECT_EQ(number(fixed->dwFileVersionMS, fixed->dwFileVersionLS), KELMO_VERSION ".0");
  EXPECT_EQ(number(fixed->dwProductVersionMS, fixed->dwProductVersionLS), KELMO_VERSION ".0");
  const std::string narrow = KELMO_VERSION;
  const std::wstring version(narrow.begin(), narrow.end());
  EXPECT_EQ(Text(L"FileVersion"), version);
  EXPECT_EQ(Text(L"ProductVersion"), version);
  EXPECT_EQ(Text(L"OriginalFilename"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(AllFiles, VersionResource, testing::ValuesIn(kFiles));

}  // namespace
