#pragma once

#include <condition_variable>
#include <cstdint>
#include <future>
#include <mutex>
#include <string>

#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"

/// A save on a thread of its own: for however long a disk keeps it waiting, the windows answer. The
/// thread that has them watches it, and decides whether it goes on.
class BackgroundSave : private SaveProgress {
 public:
  /// Begins it. `system` outlives it; its files may be used by several threads.
  BackgroundSave(platform::Core& system, SaveJob job);
  /// Ends it, if it still runs.
  ~BackgroundSave() override { End(); }
  BackgroundSave(const BackgroundSave&) = delete;
  BackgroundSave& operator=(const BackgroundSave&) = delete;

  /// Shows at `progress` what it does until it has ended, and lets messages run there; cancels it
  /// when it is not to go on. Its answer.
  SaveResult Watch(SaveProgress& progress);
  /// Cancels it and waits until it has ended: what was not whole is removed then.
  void End();

 private:
  /// What was done since it was shown last.
  struct News {
    std::int32_t done = 0;  ///< Blocks, of `total`; 0 for no other than before.
    std::int32_t total = 0;
    std::string message;  ///< Empty for none.
    bool hourglass = false;
    bool isAsked = false;  ///< The save waits for an answer.
    bool isLast = false;   ///< The save has ended.
  };
  /// Waits for a breath, or until it asks something or has ended.
  News Take();
  void Show(const News& news, SaveProgress& progress);
  void Answer(const News& news, bool goOn);

  // SaveProgress, for the thread that saves.
  void ShowBlocksDone(std::int32_t done, std::int32_t total) override;
  void ShowBlockMessage(const std::string& text) override;
  void ShowHourglass(bool on) override;
  /// What was pressed by now counts: the windows' messages have run when this answers.
  bool GoOn() override { return Ask({}); }
  bool Ask(const std::string& message);

  std::mutex mutex_;
  std::condition_variable changed_;
  News news_;
  bool isCancelled_ = false;
  bool shownHourglass_ = false;  ///< For the thread that shows.
  std::future<SaveResult> save_;
};
