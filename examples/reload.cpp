// Eight threads read a text while its dictionary changes. Run it in a folder where it may write.
//
// Texts and views never change. A reload makes new ones, and the program swaps its view. Readers
// that still have the old view keep its texts alive.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr const char* kFile = "reload_example.txt";

// The view of the program. A reader takes a copy, and uses it for a while, such as for a page.
class CurrentView {
 public:
  kelmo::View Get() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return view_;  // a copy shares the view, and is cheap
  }

  void Set(kelmo::View view) {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::swap(view_, view);
  }

 private:
  mutable std::mutex mutex_;
  kelmo::View view_;
};

bool IsError(const kelmo::Problem& problem) { return problem.severity == kelmo::Severity::error; }

// If the file cannot be read now, or texts of it are lost, the program goes on with the old ones.
bool Reload(CurrentView& current) {
  kelmo::Problems problems;
  kelmo::Loader loader;
  if (!loader.add_file(kFile, problems) || std::any_of(problems.begin(), problems.end(), IsError)) {
    return false;
  }
  current.Set(kelmo::View(loader.finish(), {"en"}));
  return true;
}

// The time and the size of the file: what tells that it has changed.
using Stamp = std::pair<std::filesystem::file_time_type, std::uintmax_t>;

Stamp StampOfFile() {
  std::error_code ignored;  // then it counts as changed, and Reload fails
  return {std::filesystem::last_write_time(kFile, ignored),
          std::filesystem::file_size(kFile, ignored)};
}

// What a translator does. A file that is renamed is never seen half written.
void Save(const std::string& title) {
  const std::string newFile = std::string(kFile) + ".new";
  std::ofstream(newFile) << "en English\ntitle " << title << '\n';
  std::filesystem::rename(newFile, kFile);
}

// Reads the title until it has changed, and tells both.
std::string Read(const CurrentView& current, std::atomic<int>& reading) {
  const std::string before = current.Get().tr("title");
  ++reading;
  std::string now = before;
  while (now == before) {
    std::this_thread::yield();
    now = current.Get().tr("title");
  }
  return before + " -> " + now;
}

void Run() {
  CurrentView current;
  Save("Pump");
  Stamp loaded = StampOfFile();
  Reload(current);
  Save("Caf\xE9");  // no UTF-8: the file would be read up to here
  std::cout << "A faulty file: " << (Reload(current) ? "taken" : "the old texts stay") << '\n';

  std::atomic<int> reading{0};
  std::vector<std::string> lines(8);
  std::vector<std::thread> readers;
  readers.reserve(lines.size());
  for (std::string& line : lines) {
    readers.emplace_back([&current, &reading, &line] { line = Read(current, reading); });
  }
  while (reading < 8) {
    std::this_thread::yield();
  }

  std::thread translator(Save, "Feed pump");
  for (bool isNew = false; !isNew;) {  // a program would go on watching
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const Stamp stamp = StampOfFile();  // before the file is read: a later change is seen again
    if (stamp != loaded && Reload(current)) {
      loaded = stamp;
      isNew = true;
    }
  }

  translator.join();
  for (std::thread& reader : readers) {
    reader.join();
  }
  for (const std::string& line : lines) {
    std::cout << line << '\n';
  }
  std::filesystem::remove(kFile);
}

}  // namespace

int main() try { Run(); } catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
