#include <memory>

#include "forms/application.h"
#include "forms/win32.h"
#include "mainwindow/frmTrimbrook.h"
#include "platform/windows/windows_platform.h"

namespace {

/// The file that the program was started with: "Open with", or dropped on its icon. The first of
/// several; empty for none.
std::string HandedFile() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  if (!arguments || count < 2) return {};
  const wchar_t* file = arguments.get()[1];
  std::wstring path(GetFullPathNameW(file, 0, nullptr, nullptr), L'\0');
  path.resize(GetFullPathNameW(file, static_cast<DWORD>(path.size()), path.data(), nullptr));
  return forms::Utf8(path);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  // Before anything that might load one.
  platform::KeepToLibrariesOfTheSystem();
  forms::StartApplication();
  platform::WindowsPlatform system;
  frmTrimbrook window(system.bundle());
  window.Show();
  const std::string file = HandedFile();
  if (!file.empty()) window.OpenHandedFile(file);
  return forms::RunMessageLoop();
}
