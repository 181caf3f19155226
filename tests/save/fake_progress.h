#pragma once

#include <functional>
#include <string>
#include <vector>

#include "save/save_progress.h"

/// Writes down what a save shows, one line a call, and cancels when it is told to.
class FakeProgress : public SaveProgress {
 public:
  std::vector<std::string> log;
  std::vector<std::string> messages;
  /// The block, from 1 on, before which the user has cancelled; 0 for never.
  int cancelBefore = 0;
  /// Called whenever messages run.
  std::function<void()> onMessages = [] {};
  int hourglasses = 0;  ///< That show; 0 is the usual pointer.

  void ShowBlocksDone(std::int32_t done, std::int32_t total) override {
    log.push_back(std::to_string(done) + " of " + std::to_string(total));
    done_ = done;
  }
  void ShowBlockMessage(const std::string& text) override { messages.push_back(text); }
  void ShowHourglass(bool on) override {
    log.push_back(on ? "hourglass" : "pointer");
    hourglasses += on ? 1 : -1;
  }
  void LetMessagesRun() override { onMessages(); }
  bool StillSaving() override { return cancelBefore == 0 || done_ + 1 < cancelBefore; }

 private:
  int done_ = 0;
};
