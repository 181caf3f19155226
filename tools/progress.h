#pragma once

#include <cstdint>

namespace tools {

/// A bar on standard error while files are read, where a person looks on.
class Progress {
 public:
  /// Takes the bar away.
  ~Progress();

  /// So many bytes more are going to be read.
  void Expect(std::int64_t bytes) { total_ += bytes; }
  /// So many of them have been.
  void Advance(std::int64_t bytes);

 private:
  std::int64_t total_ = 0;
  std::int64_t done_ = 0;
  int shown_ = 0;  ///< Percent.
};

}  // namespace tools
