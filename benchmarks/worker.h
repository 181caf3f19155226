#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>
#include <vector>

#include "benchmarks/measure.h"

/// A program beside this one that does jobs on request. It ends with this object.
class Worker {
 public:
  explicit Worker(const std::vector<std::string>& command);
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker();

  /// Has it do a job, a line of words, and waits for it. Ends this program when the worker fails.
  Measured Do(const std::string& job);

 private:
  pid_t process_ = -1;
  std::FILE* jobs_ = nullptr;
  std::FILE* answers_ = nullptr;
};
