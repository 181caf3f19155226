#include <windows.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <thread>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "resources/layout.h"

/// Works the program's windows for the bench. Each job is read from the input and answered by what
/// it took, in seconds, and the longest time for which the program's window did not answer
/// meanwhile:
///
///   start                  starts the program anew, until its window is usable
///   open SOURCE            opens a recording, from the file dialog's end on
///   save CAMERAS TARGET    saves all blocks and the first so many cameras, from the moment on at
///                          which the window begins with it
///   cancel TARGET          cancels such a save in its midst, until its window is gone

namespace driver {
namespace {

using Clock = std::chrono::steady_clock;

struct Result {
  double seconds = 0;
  double silence = 0;
};

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/// How often the program is asked something, in milliseconds. It does nothing else while it
/// answers.
constexpr DWORD kBetweenQuestions = 20;

/// Asks a window again and again for an answer, as long as this lives.
class Silence {
 public:
  explicit Silence(const Window& window)
      : thread_([this, window](const std::stop_token& end) {
          for (; !end.stop_requested(); Sleep(kBetweenQuestions)) {
            const auto start = Clock::now();
            window.Ask(WM_NULL);
            longest_ = std::max(longest_, SecondsSince(start));
          }
        }) {}
  /// Seconds.
  double End() {
    thread_.request_stop();
    thread_.join();
    return longest_;
  }

 private:
  double longest_ = 0;
  std::jthread thread_;
};

class Jobs {
 public:
  Result Do(const std::string& job, std::istream& arguments) {
    std::string path;
    int cameras = 0;
    if (job == "start") return Start();
    if (job == "save") arguments >> cameras;
    arguments >> path;
    if (job == "open") return Open(path);
    if (job == "save") return Save(cameras, path);
    if (job == "cancel") return Cancel(path);
    throw std::runtime_error("no such job: " + job);
  }

 private:
  Result Start() {
    program_.reset();
    const auto start = Clock::now();
    program_ = std::make_unique<Trimbrook>();
    return {SecondsSince(start), 0};
  }

  Result Open(const std::string& path) {
    program_->AnswerSourceDialog(path);
    const auto start = Clock::now();
    Silence silence(program_->main());
    Await("source", [&] {
      Sleep(kBetweenQuestions);
      return program_->Text(IDC_frmTrimbrook_Text1) == path;
    });
    return {SecondsSince(start), silence.End()};
  }

  Result Save(int cameras, const std::string& target) {
    const Window window = Begin(cameras, target);
    const auto start =
        Clock::now() + std::chrono::milliseconds(layout::kFrmSaveFile.rows[0].interval);
    Silence silence(program_->main());
    const Window status = window.Control(IDC_frmSaveFile_Label2);
    Await("end of the save", [&] { return status.Text() == kDone; });
    const Result result = {SecondsSince(start), silence.End()};
    program_->LeaveSave();
    return result;
  }

  Result Cancel(const std::string& target) {
    const Window window = Begin(16, target);
    Silence silence(program_->main());
    const Window percent = window.Control(IDC_frmSaveFile_Label3);
    Await("some percent", [&] { return std::atoi(percent.Text().c_str()) >= 5; });
    const auto start = Clock::now();
    window.Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn();
    Await("end of the window", [&] { return !window.IsShown() && program_->main().IsEnabled(); });
    const Result result = {SecondsSince(start), silence.End()};
    if (FileExists(target)) throw std::runtime_error("the save was over before it was cancelled");
    return result;
  }

  /// Starts a save; its window, which answers and waits to begin.
  Window Begin(int cameras, const std::string& target) {
    program_->ChooseTarget(target);
    std::vector<int> chosen(static_cast<std::size_t>(cameras));
    std::iota(chosen.begin(), chosen.end(), 1);
    program_->ChooseCameras(chosen);
    const Window window = program_->StartSave();
    window.Ask(WM_NULL);
    return window;
  }

  std::unique_ptr<Trimbrook> program_;
};

}  // namespace
}  // namespace driver

int main() {
  driver::Jobs jobs;
  try {
    for (std::string job; std::cin >> job;) {
      const auto [seconds, silence] = jobs.Do(job, std::cin);
      std::cout << seconds << ' ' << silence << std::endl;
    }
  } catch (const std::exception& fault) {
    std::cerr << fault.what() << std::endl;
    return 1;
  }
  return 0;
}
