#include "driver/wizard.h"

#include <stdexcept>

#include "driver/await.h"
#include "driver/files.h"

namespace driver {
namespace {

constexpr const char* kWizard = "frmSaveToCD";
constexpr const char* kAppPaths = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

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

void Wizard::Register(const std::string& name) {
  const std::string path = InWork(name + ".exe");
  CopyTo(InWork("fake_burner.exe"), path);
  RegSetKeyValueA(HKEY_LOCAL_MACHINE, (kAppPaths + name + ".exe").c_str(), "", REG_SZ, path.c_str(),
                  static_cast<DWORD>(path.size() + 1));
}

void Wizard::AwaitBurner(const char* title) {
  Await(title, [&] { return FindWindowA(nullptr, title) != nullptr; });
}

void Wizard::Forget() {
  DeleteFileA(InWork("eject").c_str());
  for (const char* name : {kDirectCd, kDragToDisc}) {
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, (std::string(kAppPaths) + name + ".exe").c_str());
    EndBurner(name);
  }
  RegDeleteKeyA(HKEY_CURRENT_USER, "strOrrisdeckSpecial");
  for (const std::string& file : FilesLike("E:\\*")) DeleteFileA(("E:\\" + file).c_str());
}

void Wizard::OpenWizard() {
  program_.PressSaveToCd();
  window_ = std::make_unique<Window>(program_.AwaitShown(kWizard));
  AwaitPage(kWelcomePage);
  EXPECT_FALSE(program_.main().IsEnabled());
}

void Wizard::AwaitPage(const std::string& heading) {
  Await(heading, [&] { return At(IDC_frmSaveToCD_Label2).Text() == heading; });
  program_.Settle();
  Reached(heading);
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
