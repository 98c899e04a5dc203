// The library under unusual answers of the system: calls that a signal interrupts, that do only a
// part of their work or fail midway, and files that change while they are read. This program
// exports the system calls below, and the loader finds them before those of the C library. So the
// loaded library calls them.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/exported_table.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"

namespace {

namespace fs = std::filesystem;

// ---- The calls

int RealOpen(const char* path, int flags, mode_t mode) {
  return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
int RealClose(int descriptor) { return static_cast<int>(::syscall(SYS_close, descriptor)); }
ssize_t RealRead(int descriptor, void* buffer, std::size_t size) {
  return ::syscall(SYS_read, descriptor, buffer, size);
}
ssize_t RealWrite(int descriptor, const void* bytes, std::size_t size) {
  return ::syscall(SYS_write, descriptor, bytes, size);
}
int RealStat(const char* path, struct stat* status) {
  return static_cast<int>(::syscall(SYS_newfstatat, AT_FDCWD, path, status, 0));
}
int RealFstat(int descriptor, struct stat* status) {
  return static_cast<int>(::syscall(SYS_fstat, descriptor, status));
}

struct OpenCall {
  std::string path;
  int flags;
  mode_t mode;
};

// The answers to the system calls of one call of the library, and a record of these system calls.
struct System {
  std::function<int(const char*, int, mode_t)> open = RealOpen;
  std::function<int(int)> close = RealClose;
  std::function<ssize_t(int, void*, std::size_t)> read = RealRead;
  std::function<ssize_t(int, const void*, std::size_t)> write = RealWrite;
  std::function<int(const char*, struct stat*)> stat = RealStat;
  std::function<int(int, struct stat*)> fstat = RealFstat;

  std::vector<OpenCall> opened;
  std::set<int> openDescriptors;
  std::size_t bytesRead = 0;
  int reads = 0;
  int writes = 0;
  bool ended = false;  // a read has reported the end of the file, or a read or write has failed
};

System* answering = nullptr;  // not null during a call of the library

int Fail(int error) {
  errno = error;
  return -1;
}

// While it exists, system calls of the test itself reach the real system.
class Answer {
 public:
  Answer() : system_(*std::exchange(answering, nullptr)) {}
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;
  ~Answer() { answering = &system_; }

  System* operator->() const { return &system_; }

  // Records the result of a read or write. Keeps errno.
  ssize_t Transferred(ssize_t count) const {
    const int error = errno;
    system_.ended = count == 0 || (count < 0 && error != EINTR);
    errno = error;
    return count;
  }

 private:
  System& system_;
};

}  // namespace

// Their names in this file differ from those that the loader sees.
extern "C" {

int AnswerOpen(const char* path, int flags, ...) __asm__("open");
int AnswerClose(int descriptor) __asm__("close");
ssize_t AnswerRead(int descriptor, void* buffer, std::size_t size) __asm__("read");
ssize_t AnswerWrite(int descriptor, const void* bytes, std::size_t size) __asm__("write");
int AnswerStat(const char* path, struct stat* status) __asm__("stat");
int AnswerFstat(int descriptor, struct stat* status) __asm__("fstat");

int AnswerOpen(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  if (answering == nullptr) {
    return RealOpen(path, flags, mode);
  }
  const Answer answer;
  answer->opened.push_back({path, flags, mode});
  const int descriptor = answer->open(path, flags, mode);
  if (descriptor >= 0) {
    answer->openDescriptors.insert(descriptor);
  }
  return descriptor;
}

int AnswerClose(int descriptor) {
  if (answering == nullptr) {
    return RealClose(descriptor);
  }
  const Answer answer;
  if (answer->openDescriptors.erase(descriptor) == 0) {
    ADD_FAILURE() << "closed a descriptor that was not open";
    return 0;  // otherwise the library might try again endlessly
  }
  return answer->close(descriptor);
}

ssize_t AnswerRead(int descriptor, void* buffer, std::size_t size) {
  if (answering == nullptr) {
    return RealRead(descriptor, buffer, size);
  }
  const Answer answer;
  EXPECT_EQ(answer->openDescriptors.count(descriptor), 1U) << "read a descriptor that was not open";
  EXPECT_FALSE(answer->ended) << "read again after the end or an error";
  EXPECT_GT(size, 0U);
  ++answer->reads;
  const ssize_t count = answer.Transferred(answer->read(descriptor, buffer, size));
  answer->bytesRead += count > 0 ? static_cast<std::size_t>(count) : 0;
  return count;
}

ssize_t AnswerWrite(int descriptor, const void* bytes, std::size_t size) {
  if (answering == nullptr) {
    return RealWrite(descriptor, bytes, size);
  }
  const Answer answer;
  EXPECT_EQ(answer->openDescriptors.count(descriptor), 1U) << "wrote to a descriptor not open";
  EXPECT_GT(size, 0U);
  ++answer->writes;
  if (answer->ended) {
    ADD_FAILURE() << "wrote again after an error";
    return static_cast<ssize_t>(size);  // otherwise the library might try again endlessly
  }
  return answer.Transferred(answer->write(descriptor, bytes, size));
}

int AnswerStat(const char* path, struct stat* status) {
  if (answering == nullptr) {
    return RealStat(path, status);
  }
  const Answer answer;
  return answer->stat(path, status);
}

int AnswerFstat(int descriptor, struct stat* status) {
  if (answering == nullptr) {
    return RealFstat(descriptor, status);
  }
  const Answer answer;
  EXPECT_EQ(answer->openDescriptors.count(descriptor), 1U) << "fstat of a descriptor not open";
  return answer->fstat(descriptor, status);
}

}  // extern "C"

namespace {

// ---- The contents of files

using EntriesByKey = std::map<std::wstring, std::wstring>;

EntriesByKey EntriesOf(const std::string& bytes) {
  EntriesByKey entries;
  std::wistringstream lines(model::Decode(bytes));
  std::wstring line;
  std::getline(lines, line);  // the header
  while (std::getline(lines, line)) {
    line.resize(line.find_last_not_of(L" \r") + 1);
    const std::size_t blank = std::min(line.find(L' '), line.size());
    entries.emplace(line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
  }
  return entries;
}

// Lines of an odd length. The library reads a file of this size in several chunks.
std::string FileOfLines(const std::string& prefix, std::size_t size) {
  std::string bytes = "en English\r\n";
  for (int number = 10000; bytes.size() < size; ++number) {
    bytes += prefix + std::to_string(number) + " t\xC3\xA4xt " + std::to_string(number);
    for (int i = 0; i < 40; ++i) {
      bytes += " \xC3\xA4 word";
    }
    bytes += "\r\n";
  }
  return bytes;
}

// One line that is longer than the initial buffer.
std::string FileOfOneLine(const std::string& prefix, std::size_t size) {
  std::string bytes = "en English\r\n" + prefix + " ";
  while (bytes.size() < size) {
    bytes += prefix + "\xC3\xA4";
  }
  return bytes + "\r\n" + prefix + "last end\r\n";
}

constexpr std::size_t kSize = 220'000;

// ---- Disturbances without consequences

struct Disturbance {
  const char* name;
  std::function<void(System&)> disturb;
};

// Each call succeeds only after `times` interruptions.
template <class Call>
auto Interrupted(int times, Call call) {
  return [times, left = times, call](auto... arguments) mutable -> decltype(call(arguments...)) {
    if (left > 0) {
      --left;
      return Fail(EINTR);
    }
    left = times;
    return call(arguments...);
  };
}

auto ReadsOfAtMost(std::size_t max) {
  return [max](int descriptor, void* buffer, std::size_t size) {
    return RealRead(descriptor, buffer, std::min(size, max));
  };
}

auto WritesOfAtMost(std::size_t max) {
  return [max](int descriptor, const void* bytes, std::size_t size) {
    return RealWrite(descriptor, bytes, std::min(size, max));
  };
}

// Another program holds the file: the first attempt, which does not wait, fails.
auto HeldByAnotherProgram(int interruptions) {
  return [waits = Interrupted(interruptions, RealOpen)](const char* path, int flags,
                                                        mode_t mode) mutable {
    return (flags & O_NONBLOCK) != 0 ? Fail(EWOULDBLOCK) : waits(path, flags, mode);
  };
}

auto Size(off_t size) {
  return [size](int descriptor, struct stat* status) {
    const int result = RealFstat(descriptor, status);
    status->st_size = size;
    return result;
  };
}

auto CloseThatReports(int error) {
  return [error](int descriptor) {
    RealClose(descriptor);  // the descriptor is closed in spite of the error
    return Fail(error);
  };
}

const Disturbance kHarmless[] = {
    {"nothing", [](System& /*system*/) {}},
    {"open is interrupted", [](System& system) { system.open = Interrupted(1, RealOpen); }},
    {"open is interrupted often", [](System& system) { system.open = Interrupted(100, RealOpen); }},
    {"another program holds the file",
     [](System& system) { system.open = HeldByAnotherProgram(0); }},
    {"the wait for such a file is interrupted",
     [](System& system) { system.open = HeldByAnotherProgram(3); }},
    {"each read is interrupted", [](System& system) { system.read = Interrupted(1, RealRead); }},
    {"each read is interrupted often",
     [](System& system) { system.read = Interrupted(100, RealRead); }},
    {"each write is interrupted", [](System& system) { system.write = Interrupted(1, RealWrite); }},
    {"each write is interrupted often",
     [](System& system) { system.write = Interrupted(100, RealWrite); }},
    {"everything is interrupted and cut short",
     [](System& system) {
       system.open = Interrupted(2, RealOpen);
       system.read = Interrupted(2, ReadsOfAtMost(4093));
       system.write = Interrupted(2, WritesOfAtMost(7));
       system.close = CloseThatReports(EINTR);
     }},
    {"close is interrupted", [](System& system) { system.close = CloseThatReports(EINTR); }},
    {"close reports an error", [](System& system) { system.close = CloseThatReports(EIO); }},
    {"single bytes",
     [](System& system) {
       system.read = ReadsOfAtMost(1);
       system.write = WritesOfAtMost(1);
     }},
    {"seven bytes",
     [](System& system) {
       system.read = ReadsOfAtMost(7);
       system.write = WritesOfAtMost(7);
     }},
    {"an odd number of bytes", [](System& system) { system.read = ReadsOfAtMost(4093); }},
    {"a page and a byte", [](System& system) { system.read = ReadsOfAtMost(4097); }},
    {"one byte less than a chunk", [](System& system) { system.read = ReadsOfAtMost(32767); }},
    {"no size", [](System& system) { system.fstat = Size(0); }},
    {"a size of one byte", [](System& system) { system.fstat = Size(1); }},
    {"a size of half", [](System& system) { system.fstat = Size(kSize / 2); }},
    {"a size of four chunks less one", [](System& system) { system.fstat = Size(131071); }},
    {"ten times the real size", [](System& system) { system.fstat = Size(10 * kSize); }},
    {"the largest size", [](System& system) { system.fstat = Size(INT64_MAX); }},
    {"a negative size", [](System& system) { system.fstat = Size(-1); }},
    {"the smallest size", [](System& system) { system.fstat = Size(INT64_MIN); }},
};

// ---- A newly loaded library for each row

class Host {
 public:
  explicit Host(System& system) : system_(system) {}

  std::int32_t Load(const std::wstring& folder, const std::wstring& fileName) const {
    return Answered([&] { return host_.LoadDictionary(folder.c_str(), fileName.c_str()); });
  }
  std::int32_t Init(const std::wstring& folder, const std::wstring& language) const {
    return Answered([&] { return host_.Init(folder.c_str(), language.c_str()); });
  }
  std::int32_t ExportPhyVal() const { return Answered(host_.ExportPhyVal); }

  Messages ReadMessages() const { return ::ReadMessages(host_); }

  // Of all `candidates` exactly the `expected` entries are loaded.
  void ExpectEntries(const EntriesByKey& expected, const std::set<std::wstring>& candidates) const {
    EXPECT_EQ(ReadMessages(), Messages{});
    Messages missing;
    for (const std::wstring& key : candidates) {
      const auto entry = expected.find(key);
      const std::wstring text = host_.LANG(key.c_str());
      EXPECT_TRUE(text == (entry != expected.end() ? entry->second : L""))
          << testing::PrintToString(key) << " is " << testing::PrintToString(text.substr(0, 50));
      if (entry == expected.end()) {
        missing.push_back(L"EL121. Key not found in dictionary\nKey: " + key +
                          L"\nDictionary id: " + key);
      }
    }
    EXPECT_EQ(ReadMessages(), missing);
    host_.ClearErrors();
  }

  void ExpectNoDictionary() const {
    EXPECT_EQ(host_.UseLanguage(L"en"), -1);
    EXPECT_EQ(ReadMessages(), (Messages{L"EL112. Dictionary not found\nDictionary id: en"}));
    host_.ClearErrors();
  }

  void ExpectUnits() const {
    const LoadedUnits units(library_);
    for (const int code : {10001, 10002, 30001, 40001, 40002}) {
      EXPECT_NE(units.Find(code), nullptr) << code;
    }
    EXPECT_EQ(units.Find(20001), nullptr) << "a row from before the start";
    EXPECT_EQ(ReadMessages(), Messages{});
  }

 private:
  template <class Call>
  std::int32_t Answered(Call call) const {
    struct Guard {
      ~Guard() { answering = nullptr; }
    };
    std::int32_t result = 0;
    {
      const Guard guard;
      answering = &system_;
      result = call();
    }
    EXPECT_EQ(system_.openDescriptors, std::set<int>{}) << "descriptors leaked";
    return result;
  }

  const LoadedLibrary library_;
  const LibraryExports host_ = ExportsOf(library_);
  System& system_;
};

class SystemCalls : public testing::Test {
 protected:
  // For the original file and for changed ones. A line truncated in its key yields another key.
  void AddCandidates(const EntriesByKey& entries) {
    for (const auto& entry : entries) {
      candidates_.insert(entry.first);
    }
  }

  void ExpectEntries(const Host& host, const EntriesByKey& expected) {
    AddCandidates(expected);
    host.ExpectEntries(expected, candidates_);
  }

  std::int32_t Load(const Host& host) const { return host.Load(folder_.HostPath(), L"file.txt"); }

  const ScratchFolder folder_;
  const std::string file_ = folder_.Path() / "file.txt";
  std::set<std::wstring> candidates_;
};

// ---- The library's calls

// O_NONBLOCK: open waits for nothing. O_NOCTTY: no file becomes the host's terminal. O_CLOEXEC: no
// program that the host starts inherits the file.
TEST_F(SystemCalls, OpenFilesWithTheseFlagsOnly) {
  constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  folder_.Write(L"file.txt", "en\n");
  folder_.Write(L"LANG\\ru-val.txt", "ru Russian\n");
  System load;
  EXPECT_EQ(Load(Host(load)), 0);
  ASSERT_EQ(load.opened.size(), 1U);
  EXPECT_EQ(load.opened[0].path, file_);
  EXPECT_EQ(load.opened[0].flags, O_RDONLY | kAlways);

  System init;
  EXPECT_EQ(Host(init).Init(folder_.HostPath(), L"ru"), 0);
  ASSERT_EQ(init.opened.size(), 1U);
  EXPECT_EQ(init.opened[0].path, folder_.Path() / "LANG/ru-val.txt");
  EXPECT_EQ(init.opened[0].flags, O_RDONLY | kAlways);

  const ExportPlace place(folder_);
  System exporting;
  EXPECT_EQ(Host(exporting).ExportPhyVal(), 0);
  ASSERT_EQ(exporting.opened.size(), 1U);
  EXPECT_EQ(exporting.opened[0].path, ExportPlace::kFile);
  EXPECT_EQ(exporting.opened[0].flags, O_WRONLY | O_CREAT | O_TRUNC | kAlways);
  EXPECT_EQ(exporting.opened[0].mode, 0666U);
}

TEST_F(SystemCalls, OpenAHeldFileAgainWithoutNonblock) {
  folder_.Write(L"file.txt", "en\n");
  System load;
  load.open = HeldByAnotherProgram(1);
  EXPECT_EQ(Load(Host(load)), 0);
  ASSERT_EQ(load.opened.size(), 3U);
  for (const std::size_t i : {1U, 2U}) {
    EXPECT_EQ(load.opened[i].path, file_);
    EXPECT_EQ(load.opened[i].flags, O_RDONLY | O_CLOEXEC | O_NOCTTY);
  }
}

TEST_F(SystemCalls, ReadAFileInFewLargeChunks) {
  folder_.Write(L"file.txt", FileOfLines("key", kSize));
  System system;
  EXPECT_EQ(Load(Host(system)), 0);
  EXPECT_GE(system.reads, 2) << "the files of these tests must need several chunks";
  EXPECT_LE(system.reads, 20);
}

// The reads return the whole file from the front. One more read reports the end.
TEST_F(SystemCalls, ReadEachByteOnce) {
  for (const std::size_t size : {0U, 1U, 65'535U, 65'536U, 200'000U}) {
    SCOPED_TRACE(size);
    std::string bytes = FileOfLines("key", size).substr(0, size);
    if (size > 0) {
      bytes.back() = 'x';  // not half a character
    }
    folder_.Write(L"file.txt", bytes);
    std::string received;
    int ends = 0;
    System system;
    system.read = [&](int descriptor, void* buffer, std::size_t capacity) {
      const ssize_t count = RealRead(descriptor, buffer, capacity);
      received.append(static_cast<const char*>(buffer), static_cast<std::size_t>(count));
      ends += count == 0 ? 1 : 0;
      return count;
    };
    const Host host(system);
    EXPECT_EQ(Load(host), 0);
    EXPECT_TRUE(received == bytes) << received.size() << " bytes";
    EXPECT_EQ(system.bytesRead, size);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(system.opened.size(), 1U);
    if (size > 0) {
      ExpectEntries(host, EntriesOf(bytes));
    } else {
      host.ExpectNoDictionary();
    }
  }
}

// ---- The library under disturbances without consequences

TEST_F(SystemCalls, LoadADictionaryDespiteHarmlessDisturbances) {
  for (const std::string& bytes : {FileOfLines("key", kSize), FileOfOneLine("key", kSize),
                                   FileOfLines("key", 1000), std::string("en\nkey text")}) {
    folder_.Write(L"file.txt", bytes);
    for (const Disturbance& row : kHarmless) {
      SCOPED_TRACE(testing::Message() << row.name << ", file of " << bytes.size());
      System system;
      row.disturb(system);
      const Host host(system);
      EXPECT_EQ(Load(host), 0);
      EXPECT_EQ(system.bytesRead, bytes.size());
      ExpectEntries(host, EntriesOf(bytes));
    }
  }
}

// No export shows the table of a language. The test can only check that it was read to its end.
TEST_F(SystemCalls, StartTheLibraryDespiteHarmlessDisturbances) {
  std::string bytes = "ru Russian\r\n";
  for (int code = 100'000; bytes.size() < kSize; ++code) {
    bytes += std::to_string(code) + " symbol n\xC3\xA4me " + std::string(100, 'x') + "\r\n";
  }
  folder_.Write(L"LANG\\ru-val.txt", bytes);
  for (const Disturbance& row : kHarmless) {
    SCOPED_TRACE(row.name);
    System system;
    row.disturb(system);
    const Host host(system);
    EXPECT_EQ(host.Init(folder_.HostPath(), L"ru"), 0);
    EXPECT_EQ(system.bytesRead, bytes.size());
    EXPECT_TRUE(system.ended);
    host.ExpectUnits();
  }
}

TEST_F(SystemCalls, ExportTheTableDespiteHarmlessDisturbances) {
  const ExportPlace place(folder_);
  for (const Disturbance& row : kHarmless) {
    SCOPED_TRACE(row.name);
    std::ofstream(ExportPlace::kFile) << std::string(10'000, 'x');  // longer than the table
    System system;
    row.disturb(system);
    const Host host(system);
    EXPECT_EQ(host.ExportPhyVal(), 0);
    EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
    host.ExpectUnits();
  }
}

// ---- Reading that fails midway

TEST_F(SystemCalls, KeepWhatWasReadBeforeAFailure) {
  for (const std::string& bytes : {FileOfLines("key", kSize), FileOfOneLine("key", kSize)}) {
    folder_.Write(L"file.txt", bytes);
    AddCandidates(EntriesOf(bytes));
    for (const int error : {EIO, EAGAIN}) {
      bool failed = true;
      for (int failing = 1; failed; ++failing) {
        SCOPED_TRACE(testing::Message() << "read " << failing << " fails with " << error);
        System system;
        system.read = [&](int descriptor, void* buffer, std::size_t size) {
          return system.reads == failing ? Fail(error) : RealRead(descriptor, buffer, size);
        };
        const Host host(system);
        EXPECT_EQ(Load(host), 0);
        failed = system.reads >= failing;
        if (failing == 1) {
          EXPECT_EQ(system.bytesRead, 0U);
          host.ExpectNoDictionary();
        } else {
          ExpectEntries(host, EntriesOf(bytes.substr(0, system.bytesRead)));
          EXPECT_TRUE(failed || system.bytesRead == bytes.size());
        }
      }
    }
  }
}

// ---- Files that change between two reads

struct Change {
  const char* name;
  std::function<void(const std::string& file)> apply;
  // All bytes that the reads return, if the change comes after `offset` bytes of the old `bytes`.
  std::function<std::string(const std::string& bytes, std::size_t offset)> read;
};

std::string Unchanged(const std::string& bytes, std::size_t /*offset*/) { return bytes; }

Change Truncation(const char* name, std::size_t size) {
  return {name, [size](const std::string& file) { fs::resize_file(file, size); },
          [size](const std::string& bytes, std::size_t offset) {
            return bytes.substr(0, std::max(offset, size));
          }};
}

// `content` replaces all old bytes.
Change NewContent(const char* name, const std::string& content) {
  return {name,
          [content](const std::string& file) {
            std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
          },
          [content](const std::string& bytes, std::size_t offset) {
            return bytes.substr(0, offset) + content.substr(std::min(offset, content.size()));
          }};
}

std::vector<Change> ChangesOf(const std::string& bytes) {
  const std::string other = FileOfLines("other", kSize + 5000);
  const std::string added = "added text\nlast";
  const std::size_t inLine = bytes.rfind("t\xC3\xA4xt", 190'000) + 6;
  const std::size_t inKey = bytes.rfind('\n', 190'000) + 4;
  const std::size_t inCharacter = bytes.rfind("\xC3\xA4", 190'000) + 1;
  return {
      Truncation("emptied", 0),
      Truncation("truncated before the offset of the reader", 10'000),
      Truncation("truncated in a text", inLine),
      Truncation("truncated in a key", inKey),
      Truncation("truncated in a character", inCharacter),
      Truncation("truncated behind a CR", bytes.rfind('\r', 190'000) + 1),
      NewContent("rewritten with fewer bytes", other.substr(0, 1000)),
      NewContent("rewritten with as many bytes", other.substr(0, bytes.size())),
      NewContent("rewritten with more bytes", other),
      {"overwritten in place",
       [other, size = bytes.size()](const std::string& file) {
         std::fstream(file, std::ios::binary | std::ios::in | std::ios::out)
             << other.substr(0, size);
       },
       [other](const std::string& before, std::size_t offset) {
         return before.substr(0, offset) + other.substr(offset, before.size() - offset);
       }},
      {"extended",
       [added](const std::string& file) {
         std::ofstream(file, std::ios::binary | std::ios::app) << added;
       },
       [added](const std::string& before, std::size_t /*offset*/) { return before + added; }},
      {"replaced by another file",
       [other](const std::string& file) {
         std::ofstream(file + ".new", std::ios::binary) << other;
         fs::rename(file + ".new", file);
       },
       Unchanged},
      {"removed", [](const std::string& file) { fs::remove(file); }, Unchanged},
      {"replaced by a folder",
       [](const std::string& file) {
         fs::remove(file);
         fs::create_directory(file);
       },
       Unchanged},
      {"without permissions",
       [](const std::string& file) { fs::permissions(file, fs::perms::none); }, Unchanged},
  };
}

TEST_F(SystemCalls, ReadAChangingFileAsItIsAtEachRead) {
  AddCandidates(EntriesOf(FileOfLines("other", kSize + 5000)));
  AddCandidates(EntriesOf("en\nadded text\nlast"));
  for (const std::string& bytes : {FileOfLines("key", kSize), FileOfOneLine("key", kSize)}) {
    AddCandidates(EntriesOf(bytes));
    for (const Change& change : ChangesOf(bytes)) {
      for (const int changing : {1, 2}) {
        SCOPED_TRACE(testing::Message() << change.name << " after read " << changing);
        fs::remove_all(file_);
        folder_.Write(L"file.txt", bytes);
        std::size_t offset = 0;
        System system;
        system.read = [&](int descriptor, void* buffer, std::size_t size) {
          const ssize_t count = RealRead(descriptor, buffer, size);
          if (system.reads == changing) {
            offset = system.bytesRead + static_cast<std::size_t>(count);
            change.apply(file_);
          }
          return count;
        };
        const Host host(system);
        EXPECT_EQ(Load(host), 0);
        ASSERT_GT(offset, 0U) << "nothing was changed";
        const std::string read = change.read(bytes, offset);
        const bool endsEarly = EncodeUtf8(model::Decode(read)).size() + 1 < read.size();
        EXPECT_EQ(system.bytesRead < read.size(), endsEarly);
        ExpectEntries(host, EntriesOf(read));
      }
    }
  }
}

// ---- Files that are replaced before they are opened

TEST_F(SystemCalls, RefuseAFileThatWasReplacedBeforeOpening) {
  const std::wstring path = folder_.HostPath() + L"\\file.txt";
  const Messages notFound = {L"EL111. Dictionary file not found\nDictionary: " + path};
  const struct {
    const char* name;
    std::function<void(const std::string& file)> replace;
  } rows[] = {
      {"nothing", [](const std::string& /*file*/) {}},
      {"a folder", [](const std::string& file) { fs::create_directory(file); }},
      {"a pipe", [](const std::string& file) { ::mkfifo(file.c_str(), 0600); }},
      {"a device", [](const std::string& file) { fs::create_symlink("/dev/null", file); }},
      {"a link to itself", [](const std::string& file) { fs::create_symlink("file.txt", file); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(file_);
    folder_.Write(L"file.txt", "en\nkey text\n");
    System system;
    system.open = [&](const char* file, int flags, mode_t mode) {
      fs::remove(file_);
      row.replace(file_);
      if ((flags & O_NONBLOCK) == 0) {
        ADD_FAILURE() << "open would wait for a writer of the pipe";
        return Fail(ENXIO);
      }
      return RealOpen(file, flags, mode);
    };
    const Host host(system);
    EXPECT_EQ(Load(host), -2);
    EXPECT_EQ(host.ReadMessages(), notFound);
    EXPECT_EQ(system.opened.size(), 1U);
    EXPECT_EQ(system.reads, 0);
  }
}

TEST_F(SystemCalls, FindNoFileIfOpeningOrStatusFails) {
  const std::wstring path = folder_.HostPath() + L"\\file.txt";
  const Messages notFound = {L"EL111. Dictionary file not found\nDictionary: " + path};
  folder_.Write(L"file.txt", "en\nkey text\n");
  const Disturbance rows[] = {
      {"stat fails",
       [](System& system) {
         system.stat = [](const char* /*path*/, struct stat* status) {
           status->st_mode = S_IFREG;
           return Fail(EACCES);
         };
       }},
      {"open fails",
       [](System& system) {
         system.open = [](const char* /*path*/, int /*flags*/, mode_t /*mode*/) {
           return Fail(EMFILE);
         };
       }},
      {"fstat fails",
       [](System& system) {
         system.fstat = [](int /*descriptor*/, struct stat* status) {
           status->st_mode = S_IFREG;
           return Fail(EIO);
         };
       }},
      {"the opened file is a socket",
       [](System& system) {
         system.fstat = [](int descriptor, struct stat* status) {
           const int result = RealFstat(descriptor, status);
           status->st_mode = S_IFSOCK;
           return result;
         };
       }},
  };
  for (const Disturbance& row : rows) {
    SCOPED_TRACE(row.name);
    System system;
    row.disturb(system);
    const Host host(system);
    EXPECT_EQ(Load(host), -2);
    EXPECT_EQ(host.ReadMessages(), notFound);
    EXPECT_EQ(system.reads, 0);
  }
}

// ---- Writing that fails

TEST_F(SystemCalls, KeepWhatWasWrittenBeforeAFailure) {
  const ExportPlace place(folder_);
  const std::string whole = ExportedDefaultTable();
  const struct {
    const char* name;
    ssize_t result;
    int error;
  } rows[] = {
      {"the disk is full", -1, ENOSPC},
      {"the disk is faulty", -1, EIO},
      {"the user's quota is used up", -1, EDQUOT},
      {"write would have to wait", -1, EAGAIN},
      {"nothing is written, without an error", 0, 0},
      {"nothing is written after an earlier interruption", 0, EINTR},
  };
  constexpr std::size_t kChunk = 7;
  for (const auto& row : rows) {
    for (const int failing : {1, 2, 10}) {
      SCOPED_TRACE(testing::Message() << row.name << ", write " << failing);
      std::ofstream(ExportPlace::kFile) << std::string(10'000, 'x');
      System system;
      system.write = [&](int descriptor, const void* bytes, std::size_t size) {
        if (system.writes == failing) {
          errno = row.error;
          return row.result;
        }
        return WritesOfAtMost(kChunk)(descriptor, bytes, size);
      };
      const Host host(system);
      EXPECT_EQ(host.ExportPhyVal(), 0);
      EXPECT_EQ(system.writes, failing);
      EXPECT_EQ(ExportPlace::Bytes(),
                whole.substr(0, static_cast<std::size_t>(failing - 1) * kChunk));
      host.ExpectUnits();
    }
  }
}

TEST_F(SystemCalls, WriteNothingIfTheExportedFileCannotBeOpened) {
  const ExportPlace place(folder_);
  const struct {
    const char* name;
    std::function<int(const char*, int, mode_t)> open;
    bool replaced;
  } rows[] = {
      {"no descriptor is left",
       [](const char* /*path*/, int /*flags*/, mode_t /*mode*/) { return Fail(EMFILE); }, false},
      {"the disk is read-only",
       [](const char* /*path*/, int /*flags*/, mode_t /*mode*/) { return Fail(EROFS); }, false},
      {"a pipe without a reader has replaced it",
       [](const char* path, int flags, mode_t mode) {
         fs::remove(path);
         ::mkfifo(path, 0600);
         if ((flags & O_NONBLOCK) == 0) {
           ADD_FAILURE() << "open would wait for a reader of the pipe";
           return Fail(ENXIO);
         }
         return RealOpen(path, flags, mode);
       },
       true},
      {"a folder has replaced it",
       [](const char* path, int flags, mode_t mode) {
         fs::remove(path);
         fs::create_directory(path);
         return RealOpen(path, flags, mode);
       },
       true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(ExportPlace::kFile);
    std::ofstream(ExportPlace::kFile) << "old";
    System system;
    system.open = row.open;
    const Host host(system);
    EXPECT_EQ(host.ExportPhyVal(), 0);
    EXPECT_EQ(system.opened.size(), 1U);
    EXPECT_EQ(system.writes, 0);
    if (!row.replaced) {
      EXPECT_EQ(ExportPlace::Bytes(), "old");
    }
    host.ExpectUnits();
  }
}

TEST_F(SystemCalls, WriteNothingToAPipeThatReplacedTheExportedFile) {
  const ExportPlace place(folder_);
  std::ofstream(ExportPlace::kFile) << "old";
  int reader = -1;
  System system;
  system.open = [&](const char* path, int flags, mode_t mode) {
    fs::remove(path);
    ::mkfifo(path, 0600);
    reader = RealOpen(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC, 0);
    return RealOpen(path, flags, mode);
  };
  const Host host(system);
  EXPECT_EQ(host.ExportPhyVal(), 0);
  EXPECT_EQ(system.writes, 0) << "after its reader closes, a write would end the host";
  RealClose(reader);
  host.ExpectUnits();
}

TEST_F(SystemCalls, WriteNothingIfTheExportedFileHasNoStatus) {
  const ExportPlace place(folder_);
  System system;
  system.fstat = [](int /*descriptor*/, struct stat* status) {
    status->st_mode = S_IFREG;
    return Fail(EIO);
  };
  const Host host(system);
  EXPECT_EQ(host.ExportPhyVal(), 0);
  EXPECT_EQ(system.writes, 0);
  host.ExpectUnits();
}

// ---- Signals

// Handles a signal. Interrupted calls are not restarted (no SA_RESTART).
class SignalHandler {
 public:
  SignalHandler(int signal, void (*handler)(int)) : signal_(signal) {
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(signal_, &action, &before_);
  }
  SignalHandler(const SignalHandler&) = delete;
  SignalHandler& operator=(const SignalHandler&) = delete;
  ~SignalHandler() { ::sigaction(signal_, &before_, nullptr); }

 private:
  int signal_;
  struct sigaction before_ = {};
};

// SIGALRM every 200 microseconds.
class Alarms {
 public:
  explicit Alarms(void (*handler)(int)) : handler_(SIGALRM, handler) { Set(200); }
  Alarms(const Alarms&) = delete;
  Alarms& operator=(const Alarms&) = delete;
  ~Alarms() { Set(0); }

 private:
  static void Set(suseconds_t microseconds) {
    const struct itimerval timer = {{0, microseconds}, {0, microseconds}};
    ::setitimer(ITIMER_REAL, &timer, nullptr);
  }

  SignalHandler handler_;
};

volatile sig_atomic_t alarms = 0;
volatile sig_atomic_t alarmsSinceLeaseRequest = -1;
int leased = -1;

TEST_F(SystemCalls, LoadADictionaryDespiteManySignals) {
  const std::string bytes = FileOfLines("key", 5'000'000);
  const EntriesByKey entries = EntriesOf(bytes);
  AddCandidates(entries);
  folder_.Write(L"file.txt", bytes);
  for (int load = 0; load < 2; ++load) {
    System system;
    const Host host(system);
    alarms = 0;
    std::int32_t result = -1;
    {
      const Alarms manyAlarms([](int /*signal*/) { alarms = alarms + 1; });
      result = Load(host);
    }
    EXPECT_EQ(result, 0);
    EXPECT_GT(alarms, 0);
    EXPECT_EQ(system.bytesRead, bytes.size());
    host.ExpectEntries(entries, candidates_);
  }
}

// Waiting for a lease is the only call for a file that signals really interrupt. This program also
// holds the lease, and releases it after the wait has been interrupted.
TEST_F(SystemCalls, WaitForALeaseDespiteSignals) {
  folder_.Write(L"file.txt", "en\nkey text\n");
  leased = RealOpen(file_.c_str(), O_RDWR | O_CLOEXEC, 0);
  ASSERT_GE(leased, 0);
  alarmsSinceLeaseRequest = -1;
  const SignalHandler request(SIGIO, [](int /*signal*/) { alarmsSinceLeaseRequest = 0; });
  if (::fcntl(leased, F_SETLEASE, F_WRLCK) != 0) {
    RealClose(leased);
    GTEST_SKIP() << "no leases on this file system";
  }
  int interruptions = 0;
  System system;
  system.open = [&](const char* path, int flags, mode_t mode) {
    const int descriptor = RealOpen(path, flags, mode);
    interruptions += descriptor < 0 && errno == EINTR ? 1 : 0;
    return descriptor;
  };
  const Host host(system);
  std::int32_t result = -1;
  {
    const Alarms manyAlarms([](int /*signal*/) {
      const int error = errno;
      if (alarmsSinceLeaseRequest >= 0) {
        alarmsSinceLeaseRequest = alarmsSinceLeaseRequest + 1;
      }
      if (alarmsSinceLeaseRequest == 20) {
        ::fcntl(leased, F_SETLEASE, F_UNLCK);
      }
      errno = error;
    });
    result = Load(host);
  }
  RealClose(leased);
  EXPECT_EQ(result, 0);
  EXPECT_GT(interruptions, 0);
  ExpectEntries(host, {{L"key", L"text"}});
}

}  // namespace
