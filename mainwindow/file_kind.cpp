#include "mainwindow/file_kind.h"

namespace file_kind {

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
