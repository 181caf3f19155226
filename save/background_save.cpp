#include "save/background_save.h"

#include <chrono>

namespace {

/// How often messages run, and what was done is shown.
constexpr std::chrono::milliseconds kBreath{15};

}  // namespace

BackgroundSave::BackgroundSave(platform::Core& system, SaveJob job)
    : save_(std::async(std::launch::async, [this, &system, job = std::move(job)] {
        SaveResult result = RunSave(system, *this, job);
        const std::lock_guard lock(mutex_);
        hasEnded_ = true;
        changed_.notify_all();
        return result;
      })) {}

bool BackgroundSave::Show(SaveProgress& progress) {
  const News news = Take();
  if (news.hourglass != std::exchange(shownHourglass_, news.hourglass))
    progress.ShowHourglass(news.hourglass);
  if (news.total > 0) progress.ShowBlocksDone(news.done, news.total);
  if (news.message) {
    progress.ShowBlockMessage(*news.message);
    const std::lock_guard lock(mutex_);
    isAsking_ = false;
    changed_.notify_all();
  }
  return !news.isLast;
}

BackgroundSave::News BackgroundSave::Take() {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kBreath, [this] { return hasEnded_ || news_.message; });
  if (isCancelled_) news_.message.reset();  // There may be no window left to show it.
  news_.hourglass = hourglass_;
  news_.isLast = hasEnded_;
  return std::exchange(news_, {});
}

void BackgroundSave::Cancel() {
  const std::lock_guard lock(mutex_);
  isCancelled_ = true;
  changed_.notify_all();
}

void BackgroundSave::End() {
  Cancel();
  if (save_.valid()) save_.wait();
}

void BackgroundSave::ShowBlocksDone(std::int32_t done, std::int32_t total) {
  const std::lock_guard lock(mutex_);
  news_.done = done;
  news_.total = total;
}

void BackgroundSave::ShowBlockMessage(const std::string& text) {
  std::unique_lock lock(mutex_);
  news_.message = text;
  isAsking_ = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !isAsking_ || isCancelled_; });
}

void BackgroundSave::ShowHourglass(bool on) {
  const std::lock_guard lock(mutex_);
  hourglass_ = on;
}
