#include "tools/progress.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "tools/system.h"

namespace tools {
namespace {

constexpr int kWidth = 50;

}  // namespace

void Progress::Advance(std::int64_t bytes) {
  done_ += bytes;
  const int percent = static_cast<int>(std::min<std::int64_t>(done_ * 100 / total_, 100));
  if (percent == shown_ || !IsWatched()) return;
  shown_ = percent;
  const int filled = percent * kWidth / 100;
  std::cerr << "\r[" << std::string(filled, '#') << std::string(kWidth - filled, ' ') << "] "
            << percent << '%' << std::flush;
}

Progress::~Progress() {
  if (shown_ > 0) std::cerr << '\r' << std::string(kWidth + 8, ' ') << '\r' << std::flush;
}

}  // namespace tools
