// A bar that shows how much of a long run is done.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// Shows nothing in the first second, and then a line that it writes anew. The line is erased when
/// the bar ends.
class ProgressBar {
 public:
  using Clock = std::chrono::steady_clock;

  /// `write` writes to a terminal; `now` tells the time.
  explicit ProgressBar(std::function<void(std::string_view)> write,
                       std::function<Clock::time_point()> now = Clock::now);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  /// `share` of the work is done, from 0 to 1.
  void Show(double share);

 private:
  std::function<void(std::string_view)> write_;
  std::function<Clock::time_point()> now_;
  Clock::time_point next_;  // when the line is written again
  int shown_ = -1;          // percent
};

}  // namespace KelmoLibs::Lang
