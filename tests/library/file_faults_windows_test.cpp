// Faulty files that only Windows has: opened elsewhere without sharing, devices, pipes.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/host_test.h"

namespace {

class FileFaultsWindows : public HostTest {};

TEST_F(FileFaultsWindows, AFileOpenedWithoutSharingIsNotFound) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  folder_.Write(L"held.txt", "de\nkey Wort\n");
  HANDLE holder = ::CreateFileW((folder_.Path() / "held.txt").c_str(), GENERIC_READ | GENERIC_WRITE,
                                0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  ExpectNotFound(folder_.HostPath(), L"held.txt");
  EXPECT_EQ(Text(L"key"), L"text");
  ::CloseHandle(holder);
  EXPECT_EQ(Load(L"held.txt"), 0);
  EXPECT_EQ(Text(L"key"), L"Wort");
}

TEST_F(FileFaultsWindows, AFileSharedForReadingOnlyLoads) {
  folder_.Write(L"en.txt", "en\nkey text\n");
  HANDLE reader = ::CreateFileW((folder_.Path() / "en.txt").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Load(L"en.txt"), 0) << "the library must open it for reading only";
  ::CloseHandle(reader);
}

TEST_F(FileFaultsWindows, DevicesAreNotFound) {
  for (const wchar_t* const device : {L"NUL", L"CON", L"CONIN$"}) {
    SCOPED_TRACE(testing::PrintToString(device));
    ExpectNotFound(L"\\\\.", device);
  }
}

TEST_F(FileFaultsWindows, APipeIsNotFound) {
  HANDLE pipe = ::CreateNamedPipeW(L"\\\\.\\pipe\\kelmo_localizer_test", PIPE_ACCESS_DUPLEX,
                                   PIPE_TYPE_BYTE | PIPE_WAIT, 1, 4096, 4096, 0, nullptr);
  ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
  ExpectNotFound(L"\\\\.\\pipe", L"kelmo_localizer_test");
  ::CloseHandle(pipe);
}

}  // namespace
