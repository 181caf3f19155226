#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "capture/mdlFileProcessing.h"
#include "cdwizard/wizard_view.h"
#include "save/main_window_view.h"
#include "save/save_messages.h"
#include "save/save_state.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

/// A wizard's window that writes down what is asked of it, one line a call: "page HEADING", "tell
/// TEXT", "tell as application TEXT", "ask TEXT", "percent N", "progress", "busy", "idle",
/// "hourglass", "pointer", "discard", "close".
class FakeWizardView : public WizardView {
 public:
  std::vector<std::string> log;
  PageLook look;
  std::vector<std::string> drives;
  WizardInput input;
  std::deque<bool> answers;  ///< What the next questions are answered.
  std::function<void()> onMessages = [] {};
  int messagesUntilEnd = 0;  ///< The session ends when messages run so often; 0 for never.

  /// The lines logged since the last call.
  std::vector<std::string> Taken() { return std::exchange(log, {}); }

  void ShowPage(const PageLook& page) override {
    look = page;
    log.push_back("page " + page.heading);
  }
  void ShowDrives(const std::vector<std::string>& found) override {
    drives = found;
    input.drive = found.back();
  }
  WizardInput Input() override { return input; }
  void SetFileName(const std::string& name) override { input.fileName = name; }
  void ShowMessage(const std::string& text) override { log.push_back("tell " + text); }
  void ShowHourglass(bool on) override { log.push_back(on ? "hourglass" : "pointer"); }
  void SetCopying(bool on) override { log.push_back(on ? "busy" : "idle"); }
  void DiscardInput() override { log.push_back("discard"); }
  void CloseWindow() override { log.push_back("close"); }
  platform::WindowHandle Window() override { return platform::WindowHandle{77}; }
  void ShowProgress() override { log.push_back("progress"); }
  void ShowPercent(double percent) override {
    log.push_back("percent " + std::to_string(std::lround(percent)));
  }
  void ShowApplicationMessage(const std::string& text) override {
    log.push_back("tell as application " + text);
  }
  bool AskYesNo(const std::string& text) override {
    log.push_back("ask " + text);
    const bool answer = answers.empty() || answers.front();
    if (!answers.empty()) answers.pop_front();
    return answer;
  }
  bool GoOn() override {
    onMessages();
    if (messagesUntilEnd > 1) return --messagesUntilEnd > 0;
    return messagesUntilEnd == 0;
  }
};

inline constexpr char kSource[] = "C:\\Rec\\cam.60D";

/// Three blocks with an image of each of three cameras.
inline const std::string& ThreeBlocks() {
  static const std::string recording = [] {
    std::vector<BlockPlan> blocks(3);
    for (int i = 0; i < 9; ++i)
      blocks[i / 3].images.push_back(
          {.camera = i % 3, .seconds = 1000 + i, .bytes = Picture(900, i)});
    return Recording(0x30, blocks);
  }();
  return recording;
}

/// A recording of three blocks, of which the first two are chosen, a CD drive E:, and what a wizard
/// works with.
struct WizardWorld : MainWindowView {
  WizardWorld() {
    mdlSave::blnSomeCameras = false;
    mdlFileProcessing::bln20D = false;
    disk.cdRoms = {"E:"};
    disk.Put(kSource, ThreeBlocks());
  }
  /// Scans the recording and chooses camera 2.
  void ChooseCamera() {
    mdlFileProcessing::ScanSourceFile(disk, kSource);
    mdlSave::blnSomeCameras = true;
    mdlSave::lngCamSelLow = 1 << 1;
  }

  // The main window's choices.
  std::string SourcePath() override { return source; }
  std::string TargetPath() override { return target; }
  std::int32_t SizeEstimateMB() override { return 4; }
  std::int32_t FirstBlock() override { return first; }
  std::int32_t LastBlock() override { return last; }

  std::string source = kSource;
  std::string target;
  std::int32_t first = 1;
  std::int32_t last = 2;
  FakePlatform outside;
  MemoryDisk& disk = outside.disk;
  FakeWizardView view;
};
