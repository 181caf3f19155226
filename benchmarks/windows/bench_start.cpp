#include <windows.h>

#include <chrono>
#include <iostream>
#include <string>

/// Starts a program whenever "start" is read from the input, and answers with the seconds until its
/// main window is shown and answers messages, and a 0. The arguments are the program and the class
/// of that window.

namespace {

constexpr DWORD kPatience = 20'000;  // Milliseconds.

/// Waits until the window is usable. False when it never is.
bool AwaitWindow(const PROCESS_INFORMATION& process, const char* className) {
  if (WaitForInputIdle(process.hProcess, kPatience) != 0) return false;
  const ULONGLONG deadline = GetTickCount64() + kPatience;
  for (;;) {
    const HWND window = FindWindowA(className, nullptr);
    DWORD_PTR answer = 0;
    if (window && IsWindowVisible(window))
      return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, &answer) != 0;
    if (GetTickCount64() > deadline) return false;
    Sleep(1);
  }
}

void EndProgram(const PROCESS_INFORMATION& process) {
  TerminateProcess(process.hProcess, 0);
  WaitForSingleObject(process.hProcess, kPatience);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

/// Seconds; below 0 when the program did not come up.
double SecondsToStart(std::string program, const char* className) {
  using Clock = std::chrono::steady_clock;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  const auto start = Clock::now();
  if (!CreateProcessA(nullptr, program.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process))
    return -1;
  const bool up = AwaitWindow(process, className);
  const std::chrono::duration<double> seconds = Clock::now() - start;
  EndProgram(process);
  return up ? seconds.count() : -1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  for (std::string job; std::cin >> job;) {
    const double seconds = SecondsToStart(argv[1], argv[2]);
    if (seconds < 0) return 1;
    std::cout << seconds << " 0" << std::endl;
  }
  return 0;
}
