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
        state_.isLast = true;
        changed_.notify_all();
        return result;
      })) {}

SaveResult BackgroundSave::Watch(SaveProgress& progress) {
  for (State state; !state.isLast;) {
    state = Await();
    Show(state, progress);
    if (!state.isLast) Answer(state, progress.GoOn());
  }
  return save_.get();
}

BackgroundSave::State BackgroundSave::Await() {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kBreath, [this] { return state_.isAsked || state_.isLast; });
  if (isCancelled_) state_.message.clear();  // There may be no window left to show it.
  return state_;
}

void BackgroundSave::Show(const State& state, SaveProgress& progress) {
  if (state.hourglass != shown_.hourglass) progress.ShowHourglass(state.hourglass);
  if (state.done != shown_.done) progress.ShowBlocksDone(state.done, state.total);
  if (!state.message.empty()) progress.ShowBlockMessage(state.message);
  shown_ = state;
}

void BackgroundSave::Answer(const State& state, bool goOn) {
  const std::lock_guard lock(mutex_);
  if (!goOn) isCancelled_ = true;
  if (state.isAsked) {
    state_.isAsked = false;
    state_.message.clear();
  }
  changed_.notify_all();
}

void BackgroundSave::End() {
  Answer({}, false);
  if (save_.valid()) save_.wait();
}

void BackgroundSave::ShowBlocksDone(std::int32_t done, std::int32_t total) {
  const std::lock_guard lock(mutex_);
  state_.done = done;
  state_.total = total;
}

void BackgroundSave::ShowBlockMessage(const std::string& text) {
  Ask(text);
}

void BackgroundSave::ShowHourglass(bool on) {
  const std::lock_guard lock(mutex_);
  state_.hourglass = on;
}

bool BackgroundSave::GoOn() {
  {
    const std::lock_guard lock(mutex_);
    if (state_.total == 0 || state_.done < state_.total) return !isCancelled_;
  }
  return Ask({});
}

bool BackgroundSave::Ask(const std::string& message) {
  std::unique_lock lock(mutex_);
  state_.message = message;
  state_.isAsked = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !state_.isAsked || isCancelled_; });
  return !isCancelled_;
}
