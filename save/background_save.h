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
  /// How far it is.
  struct State {
    std::int32_t done = 0;  ///< Blocks, of `total`.
    std::int32_t total = 0;
    std::string message;  ///< Waits for its answer; empty for none.
    bool hourglass = false;
    bool isAsked = false;  ///< The save waits for an answer.
    bool isLast = false;   ///< The save has ended.
  };
  /// Waits for a breath, or until it asks something or has ended.
  State Await();
  void Show(const State& state, SaveProgress& progress);
  void Answer(const State& state, bool goOn);

  // SaveProgress, for the thread that saves.
  void ShowBlocksDone(std::int32_t done, std::int32_t total) override;
  void ShowBlockMessage(const std::string& text) override;
  void ShowHourglass(bool on) override;
  /// When all blocks are done the windows' messages have run before this answers: what was pressed
  /// before the file takes its name counts. Until then the save need not wait for them.
  bool GoOn() override;
  bool Ask(const std::string& message);

  std::mutex mutex_;
  std::condition_variable changed_;
  State state_;
  bool isCancelled_ = false;
  State shown_;  ///< For the thread that shows.
  std::future<SaveResult> save_;
};
