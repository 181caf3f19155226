#include "mainwindow/file_kind.h"

#include <algorithm>

namespace file_kind {

bool IsNameOf20D(const std::string& path) {
  constexpr std::string_view kKind = "20D";
  if (path.size() < kKind.size()) return false;
  std::string end = path.substr(path.size() - kKind.size());
  std::replace(end.begin(), end.end(), 'd', 'D');
  return end == kKind;
}

const char* Filter(bool is20D) {
  return is20D ? "JPEG2000 Image Sequences (*.20D)|*.20D" : "Wavelet Image Sequences (*.60D)|*.60D";
}

std::string SourceFilter() {
  return std::string(Filter(true)) + "|" + Filter(false);
}

int NumberOfFilter(bool is20D) {
  return is20D ? 1 : 2;
}

}  // namespace file_kind
