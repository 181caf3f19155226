#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <vector>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"
#include "tests/windows/rounds.h"

namespace driver {
namespace {

bool IsForm(const Window& window) {
  return window.ClassName().starts_with("frm");
}

/// Does anything that a user can do, in an order that a seed settles.
class RestlessUser {
 public:
  explicit RestlessUser(unsigned seed) : random_(seed) {
    Resize(InWork("zeros.60D"), 3 * kBlock);
    CopyTo(Recording("pictures.20d"), InWork("wrong kind.60D"));
    CopyTo(Recording("day.60D"), InWork("cut.60D"));
    Append(InWork("cut.60D"), std::string(kBlock / 2 + 9, '\x7F'));
  }

  /// Does one thing, and checks that the program lives and answers afterwards.
  void Act() {
    const Window front = Front();
    last_ = front.Text();
    const bool isMain = front.handle() == program_->main().handle();
    if (FileDialog::Is(front))
      Chance(20) ? PressAnyButton(front) : AcceptFile(front);
    else if (isMain && Chance(15))
      program_->At(IDC_frmTrimbrook_Command1).ClickAndGoOn();
    else if (isMain && Chance(4))
      program_->PressSaveToCd();
    else if (!IsForm(front) || Chance(25))
      PressAnyButton(front);
    else if (!isMain && Chance(8))
      front.Close();
    else
      UseAnyControl(front);
    AwaitHandled();
  }

 private:
  int Any(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool Chance(int percent) { return Any(100) < percent; }
  template <typename List>
  auto AnyOf(const List& items) {
    return items[static_cast<std::size_t>(Any(static_cast<int>(std::size(items))))];
  }

  /// Starts the program again when it has ended without a fault, and raises when it crashed.
  void RequireLife() {
    if (program_->Runs()) return;
    const DWORD code = program_->AwaitEnd();
    if (code != 0)
      throw std::runtime_error("Ended with " + std::to_string(code) + " after: " + last_);
    program_ = std::make_unique<Trimbrook>();
  }

  /// A user can do nothing in a window beneath another one.
  void AwaitHandled() {
    RequireLife();
    program_->Settle();
    RequireLife();
  }

  /// The window in front that takes input: a program always has one, or it hangs.
  Window Front() {
    return *Await("window that takes input", [this]() -> std::optional<Window> {
      for (const Window& window : WindowsOf(GetProcessId(program_->process())))
        if (window.IsUsable() && (IsForm(window) || window.ClassName() == kDialogClass))
          return window;
      RequireLife();
      return {};
    });
  }

  void AcceptFile(const Window& window) {
    const std::string sources[] = {Recording("day.60D"),       Recording("long.60D"),
                                   Recording("cameras32.60D"), InWork("wrong kind.60D"),
                                   InWork("cut.60D"),          InWork("no such.60D"),
                                   InWork("zeros.60D"),        "C:\\work"};
    const std::string targets[] = {InWork("restless.60D"), InWork("restless.20D"),
                                   InWork("cut.60D"), "C:\\no such\\folder.60D", "F:\\a.60D"};
    const bool forTarget = window.Text() == kTargetDialog;
    try {
      FileDialog(window).Accept(forTarget ? AnyOf(targets) : AnyOf(sources));
    } catch (const std::runtime_error&) {
      // It was about to close.
    }
  }

  std::vector<Window> Usable(const Window& window, const std::string& className = "") {
    std::vector<Window> usable = window.Controls();
    std::erase_if(usable, [&](const Window& control) {
      return !control.IsUsable() ||
             GetDlgCtrlID(control.handle()) == IDC_frmTrimbrook_Command4 ||  // Ends the program.
             (!className.empty() && control.ClassName() != className);
    });
    return usable;
  }

  void PressAnyButton(const Window& window) {
    const std::vector<Window> buttons = Usable(window, "Button");
    if (!buttons.empty()) PostMessageW(AnyOf(buttons).handle(), BM_CLICK, 0, 0);
  }

  /// Clicks, types or presses keys in a control.
  void UseAnyControl(const Window& form) {
    const std::vector<Window> usable = Usable(form);
    if (usable.empty()) return;
    const HWND control = AnyOf(usable).handle();
    last_ = form.ClassName() + " " + std::to_string(GetDlgCtrlID(control));
    const WORD keys[] = {VK_LEFT,  VK_RIGHT, VK_UP,    VK_DOWN,   VK_HOME, VK_END,
                         VK_PRIOR, VK_NEXT,  VK_SPACE, VK_RETURN, VK_TAB,  VK_ESCAPE};
    const int way = Any(3);
    if (way == 0) return ClickInto(control);
    for (int count = Any(4); count >= 0; --count)
      way == 1 ? Post(control, WM_CHAR, WM_NULL, AnyOf(L"0123456789aZ\b\xE9"))
               : Post(control, WM_KEYDOWN, WM_KEYUP, AnyOf(keys));
  }

  void ClickInto(HWND control) {
    RECT area = {};
    GetClientRect(control, &area);
    Post(control, WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON,
         MAKELPARAM(Any(static_cast<int>(area.right) + 1), Any(static_cast<int>(area.bottom) + 1)));
  }

  static void Post(HWND control, UINT down, UINT up, WPARAM what, LPARAM where = 0) {
    for (const UINT message : {down, up}) PostMessageW(control, message, what, where);
  }

  std::string last_;  ///< What was done last.
  std::mt19937 random_;
  std::unique_ptr<Trimbrook> program_ = std::make_unique<Trimbrook>();
};

TEST(Restless, TheProgramBearsAnything) {
  constexpr int kShortForm = 150;
  RestlessUser user(1);
  PrintFigure(RunRounds(kShortForm, [&](int) { user.Act(); }), "actions");
}

}  // namespace
}  // namespace driver
