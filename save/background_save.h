#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <future>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"

/// A save on a thread of its own: for however long a disk keeps it waiting, the windows answer. The
/// thread that has them shows here what it does, and alone decides that it is cancelled.
class BackgroundSave : private SaveProgress {
 public:
  /// Begins it. `system` outlives it; its files may be used by several threads.
  BackgroundSave(platform::Core& system, SaveJob job);
  /// Ends it, if it still runs.
  ~BackgroundSave() override { End(); }
  BackgroundSave(const BackgroundSave&) = delete;
  BackgroundSave& operator=(const BackgroundSave&) = delete;

  /// Waits for a breath, or until it has ended or has a message, and shows at `progress` what it
  /// has done meanwhile. False once it has ended.
  bool Show(SaveProgress& progress);
  /// Cancels it: it ends as soon as its disks let it.
  void Cancel();
  /// Cancels it and waits until it has ended: what was not whole is removed then.
  void End();
  /// Its answer, once, when it has ended.
  SaveResult Result() { return save_.get(); }

 private:
  /// What was done since it was shown last.
  struct News {
    std::int32_t done = 0;  ///< Blocks, of `total`; 0 for no other than before.
    std::int32_t total = 0;
    std::optional<std::string> message;  ///< Waits for its answer.
    bool hourglass = false;
    bool isLast = false;  ///< The save has ended.
  };
  News Take();

  // SaveProgress, for the thread that saves.
  void ShowBlocksDone(std::int32_t done, std::int32_t total) override;
  void ShowBlockMessage(const std::string& text) override;
  void ShowHourglass(bool on) override;
  bool GoOn() override { return !isCancelled_; }

  std::mutex mutex_;
  std::condition_variable changed_;
  News news_;
  bool isAsking_ = false;   ///< A message has not been answered.
  bool hourglass_ = false;  ///< Is to be seen.
  bool hasEnded_ = false;
  std::atomic<bool> isCancelled_ = false;
  bool shownHourglass_ = false;  ///< For the thread that shows.
  std::future<SaveResult> save_;
};
