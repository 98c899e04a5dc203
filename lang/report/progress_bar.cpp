#include "lang/report/progress_bar.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace KelmoLibs::Lang {
namespace {

using namespace std::chrono_literals;

constexpr ProgressBar::Clock::duration kSilent = 1s;
constexpr ProgressBar::Clock::duration kPause = 100ms;
constexpr int kHundred = 100;
constexpr int kPercentOfASign = 5;
constexpr std::size_t kWidth = kHundred / kPercentOfASign + 7;  // with brackets and "100 %"

}  // namespace

ProgressBar::ProgressBar(std::function<void(std::string_view)> write,
                         std::function<Clock::time_point()> now)
    : write_(std::move(write)), now_(std::move(now)), next_(now_() + kSilent) {}

ProgressBar::~ProgressBar() {
  if (shown_ >= 0) {
    write_('\r' + std::string(kWidth + 1, ' ') + '\r');
  }
}

void ProgressBar::Show(double share) {
  const Clock::time_point time = now_();
  if (time < next_) {
    return;
  }
  next_ = time + kPause;
  const int percent = std::clamp(static_cast<int>(share * kHundred), 0, kHundred);
  if (percent == shown_) {
    return;
  }
  shown_ = percent;
  const auto signs = static_cast<std::size_t>(percent / kPercentOfASign);
  std::string line = "\r[" + std::string(signs, '=');
  line += std::string(kHundred / kPercentOfASign - signs, ' ') + "] ";
  write_(line + std::to_string(percent) + " %");
}

}  // namespace KelmoLibs::Lang
