#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>
#include <vector>

/// What a job took.
struct Measured {
  double seconds = 0;
  double silence = 0;  ///< The longest time without an answer of the window; seconds.
};

/// The program under Wine, its windows worked by another program beside this one. It ends with this
/// object.
class Program {
 public:
  /// `worker` is the command of the program that works the windows.
  explicit Program(const std::vector<std::string>& worker);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  /// Has a job done, a line of words, and waits for its end. Ends this program when it fails.
  Measured Do(const std::string& job);

 private:
  pid_t process_ = -1;
  std::FILE* jobs_ = nullptr;
  std::FILE* answers_ = nullptr;
};
