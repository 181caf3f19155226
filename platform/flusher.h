#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/files.h"

namespace platform {

/// The thread in which one file is flushed, time and again: a new one for each flush would cost
/// more than many a flush. It begins with the first and ends with this object.
class Flusher {
 public:
  Flusher() = default;
  ~Flusher() {
    if (!thread_.joinable()) return;
    Hand({});
    thread_.join();
  }
  Flusher(const Flusher&) = delete;
  Flusher& operator=(const Flusher&) = delete;

  /// Runs what flushes the file; the one before must have ended. The answer tells how long it took.
  std::future<Flushed> Begin(std::function<Flushed()> flush) {
    std::packaged_task<Flushed()> task([flush = std::move(flush)] {
      const auto begun = std::chrono::steady_clock::now();
      Flushed flushed = flush();
      flushed.took = std::chrono::steady_clock::now() - begun;
      return flushed;
    });
    std::future<Flushed> answer = task.get_future();
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    Hand(std::move(task));
    return answer;
  }

 private:
  /// Hands a task over; an empty one is the last.
  void Hand(std::packaged_task<Flushed()> task) {
    {
      const std::lock_guard lock(mutex_);
      task_ = std::move(task);
      isHanded_ = true;
    }
    handed_.notify_one();
  }
  std::packaged_task<Flushed()> Next() {
    std::unique_lock lock(mutex_);
    handed_.wait(lock, [this] { return isHanded_; });
    isHanded_ = false;
    return std::move(task_);
  }
  void Run() {
    for (auto task = Next(); task.valid(); task = Next()) task();
  }

  std::mutex mutex_;
  std::condition_variable handed_;
  std::packaged_task<Flushed()> task_;
  bool isHanded_ = false;
  std::thread thread_;
};

}  // namespace platform
