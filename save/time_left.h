#pragma once

#include <chrono>
#include <string>

/// Works out how long work will still take, from how far it has come.
class TimeLeft {
 public:
  using Time = std::chrono::steady_clock::duration;

  /// The work is at `done` of 1 at a time, counted from any moment. Answers the words for the user,
  /// "About 3 minutes left"; none while nothing can be told yet, and for the last moments.
  std::string At(Time now, double done);

 private:
  struct Mark {
    Time time{};
    double done = 0;
  };
  bool begun_ = false;
  /// The speed is that since `since_`, so that it follows what slows the work down; `next_` takes
  /// its place after a while.
  Mark since_;
  Mark next_;
};

/// The words for a time that is left.
std::string TimeLeftText(std::chrono::seconds left);
