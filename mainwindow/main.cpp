#include "forms/application.h"
#include "mainwindow/frmTrimbrook.h"
#include "platform/windows/windows_platform.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  forms::StartApplication();
  platform::WindowsPlatform system;
  frmTrimbrook window(system.bundle());
  window.Show();
  return forms::RunMessageLoop();
}
