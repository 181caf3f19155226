#include "driver/wizard.h"

#include <algorithm>
#include <stdexcept>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "forms/text.h"

namespace driver {
namespace {

constexpr const char* kWizard = "frmSaveToCD";
constexpr const char* kAppPaths = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

/// Height of a text in the system's font when it is broken into lines of this width; pixels.
int HeightOf(const std::string& text, int width) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  const HDC screen = GetDC(nullptr);
  const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
  const HGDIOBJ before = SelectObject(screen, font);
  RECT place = {0, 0, width, 0};
  DrawTextW(screen, forms::Wide(text).c_str(), -1, &place,
            DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
  SelectObject(screen, before);
  DeleteObject(font);
  ReleaseDC(nullptr, screen);
  return place.bottom;
}

void EndBurner(const std::string& name) {
  const std::string program = InWork(name + ".exe");
  Await("end of " + name, [&] {
    if (const HWND window = FindWindowA("FakeBurner", name.c_str()))
      PostMessageA(window, WM_CLOSE, 0, 0);
    DeleteFileA(program.c_str());
    return !FileExists(program);
  });
  DeleteFileA(InWork(name + ".log").c_str());
}

}  // namespace

void Burners::Register(const std::string& name) {
  const std::string path = InWork(name + ".exe");
  CopyTo(InWork("fake_burner.exe"), path);
  RegSetKeyValueA(HKEY_LOCAL_MACHINE, (kAppPaths + name + ".exe").c_str(), "", REG_SZ, path.c_str(),
                  static_cast<DWORD>(path.size() + 1));
}

void Burners::AwaitBurner(const char* title) {
  Await(title, [&] { return FindWindowA(nullptr, title) != nullptr; });
}

bool Burners::HasGotKeys(const std::string& name, const std::vector<std::string>& keys) {
  constexpr DWORD kOnTheirWay = 2'000;  // Milliseconds.
  for (const ULONGLONG deadline = GetTickCount64() + kOnTheirWay; GetTickCount64() < deadline;) {
    const std::string log = Read(InWork(name + ".log"));
    const auto lost = std::count_if(keys.begin(), keys.end(), [&](const std::string& key) {
      return log.find(key + "\r\n") == std::string::npos;
    });
    if (lost <= 1) return true;
    Sleep(2);
  }
  return false;
}

void Burners::Forget() {
  DeleteFileA(InWork("eject").c_str());
  for (const char* name : {kDirectCd, kDragToDisc}) {
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, (std::string(kAppPaths) + name + ".exe").c_str());
    EndBurner(name);
  }
  RegDeleteKeyA(HKEY_CURRENT_USER, "strOrrisdeckSpecial");
  for (const char* folder : {"E:\\", "E:\\Tessaview\\"})
    for (const std::string& file : FilesLike(folder + std::string("*")))
      DeleteFileA((folder + file).c_str());
}

void Wizard::Open(const std::string& recording, const std::vector<int>& cameras) {
  program_.OpenSource(recording);
  if (!cameras.empty()) program_.ChooseCameras(cameras);
}

void Wizard::AskForWizard() {
  EXPECT_FALSE(program_.At(IDC_frmTrimbrook_Command7).IsShown());
  program_.PressSaveToCd();
}

void Wizard::OpenWizard() {
  AskForWizard();
  window_ = std::make_unique<Window>(program_.AwaitShown(kWizard));
  AwaitPage(kWelcomePage);
  EXPECT_FALSE(program_.main().IsEnabled());
}

void Wizard::AwaitPage(const std::string& heading) {
  Await(heading, [&] { return At(IDC_frmSaveToCD_Label2).Text() == heading; });
  program_.Settle();
  ExpectInstructionsToFit();
  for (int i = 0; i < kButtons; ++i)
    EXPECT_FALSE(PageButton(i).IsEnabled() && !PageButton(i).IsShown()) << i;
}

void Wizard::ExpectInstructionsToFit() {
  const Window label = At(IDC_frmSaveToCD_Label1);
  const RECT place = label.Place();
  EXPECT_LE(HeightOf(label.Text(), place.right - place.left), place.bottom - place.top)
      << label.Text();
  // The desktop may still be moving the window.
  const Window line = At(IDC_frmSaveToCD_Frame1);
  Await("line below the text", [&] { return label.Place().bottom <= line.Place().top; });
}

void Wizard::GoToNamePage(const std::string& fileName) {
  OpenWizard();
  Press(kStart);
  AwaitPage(kDrivePage);
  Press(kChooseDrive);
  AwaitPage(kNamePage);
  AwaitBurner(kDirectCd);
  At(IDC_frmSaveToCD_Text1).SetText(fileName);
}

std::unique_ptr<Pause> Wizard::CatchCopy() {
  const std::string fileName = At(IDC_frmSaveToCD_Text1).Text();
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    Press(kCopy);
    if (auto pause = PauseInTheMidst(At(IDC_frmSaveToCD_Label3))) return pause;
    AwaitPage(kEjectPage);
    window_->Close();
    ExpectWizardGone();
    GoToNamePage(fileName);
  }
  throw std::runtime_error("No copy was caught in its midst");
}

void Wizard::ExpectWizardGone() {
  program_.AwaitGone(kWizard);
  Await("main window", [&] { return program_.main().IsEnabled(); });
}

}  // namespace driver
