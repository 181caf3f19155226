#include "save/background_save.h"

#include <chrono>
#include <utility>

namespace {

/// How often messages run, and what was done is shown, while nothing is asked.
constexpr std::chrono::milliseconds kBreath{15};

}  // namespace

BackgroundSave::BackgroundSave(platform::Core& system, SaveJob job)
    : save_(std::async(std::launch::async, [this, &system, job = std::move(job)] {
        SaveResult result = RunSave(system, *this, job);
        const std::lock_guard lock(mutex_);
        news_.isLast = true;
        changed_.notify_all();
        return result;
      })) {}

SaveResult BackgroundSave::Watch(SaveProgress& progress) {
  for (News news; !news.isLast;) {
    news = Take();
    Show(news, progress);
    if (!news.isLast) Answer(news, progress.GoOn());
  }
  return save_.get();
}

void BackgroundSave::Show(const News& news, SaveProgress& progress) {
  if (news.hourglass != std::exchange(shownHourglass_, news.hourglass))
    progress.ShowHourglass(news.hourglass);
  if (news.total > 0) progress.ShowBlocksDone(news.done, news.total);
  if (!news.message.empty()) progress.ShowBlockMessage(news.message);
}

BackgroundSave::News BackgroundSave::Take() {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kBreath, [this] { return news_.isAsked || news_.isLast; });
  if (isCancelled_) news_.message.clear();  // There may be no window left to show it.
  News news = news_;
  news_.total = 0;
  news_.message.clear();
  return news;
}

void BackgroundSave::Answer(const News& news, bool goOn) {
  const std::lock_guard lock(mutex_);
  if (!goOn) isCancelled_ = true;
  if (news.isAsked) news_.isAsked = false;
  changed_.notify_all();
}

void BackgroundSave::End() {
  Answer({}, false);
  if (save_.valid()) save_.wait();
}

void BackgroundSave::ShowBlocksDone(std::int32_t done, std::int32_t total) {
  const std::lock_guard lock(mutex_);
  news_.done = done;
  news_.total = total;
}

void BackgroundSave::ShowBlockMessage(const std::string& text) {
  Ask(text);
}

void BackgroundSave::ShowHourglass(bool on) {
  const std::lock_guard lock(mutex_);
  news_.hourglass = on;
}

bool BackgroundSave::Ask(const std::string& message) {
  std::unique_lock lock(mutex_);
  news_.message = message;
  news_.isAsked = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !news_.isAsked || isCancelled_; });
  return !isCancelled_;
}
