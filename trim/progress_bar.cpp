#include "trim/progress_bar.h"

#include <algorithm>
#include <cstdio>

namespace trim {
namespace {

/// "[#####     ]  50%"; full only when this is gone.
std::string Bar(double share) {
  constexpr int kWidth = 30;
  const auto filled = static_cast<std::size_t>(share * kWidth);
  const std::string percent = std::to_string(std::min(static_cast<int>(share * 100), 99));
  return '[' + std::string(filled, '#') + std::string(kWidth - filled, ' ') + "] " +
         std::string(3 - percent.size(), ' ') + percent + '%';
}

}  // namespace

ProgressBar::~ProgressBar() {
  if (width_ > 0) std::fprintf(stderr, "\r%*s\r", width_, "");
}

void ProgressBar::Show(std::int32_t done, std::int32_t total) {
  using std::chrono::milliseconds;
  constexpr milliseconds kBetween{100};
  const auto now = std::chrono::duration_cast<milliseconds>(system_.core().clock.Now());
  if (now < showNext_) return;
  showNext_ = now + kBetween;
  const int columns = system_.Columns();
  if (columns == 0) return;
  const double share = static_cast<double>(done) / total;
  const std::string line = label_ + ' ' + Bar(share) + "  " + timeLeft_.At(now, share);
  width_ = columns - 1;  // In the last column some terminals begin a new line.
  std::fprintf(stderr, "\r%-*.*s", width_, width_, line.c_str());
}

}  // namespace trim
