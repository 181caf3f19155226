#pragma once

#include <functional>
#include <string>
#include <vector>

#include "save/save_progress.h"

/// Writes down what a save shows, and cancels when it is told to.
class FakeProgress : public SaveProgress {
 public:
  std::vector<std::string> messages;
  /// The block, from 1 on, before which the user has cancelled; 0 for never.
  int cancelBefore = 0;
  /// Called whenever messages run.
  std::function<void()> onMessages = [] {};
  int done = 0;         ///< Blocks.
  int hourglasses = 0;  ///< That show; 0 is the usual pointer.

  void ShowBlocksDone(std::int32_t count, std::int32_t) override { done = count; }
  void ShowBlockMessage(const std::string& text) override { messages.push_back(text); }
  void ShowHourglass(bool on) override { hourglasses += on ? 1 : -1; }
  bool GoOn() override {
    onMessages();
    return cancelBefore == 0 || done + 1 < cancelBefore;
  }
};
