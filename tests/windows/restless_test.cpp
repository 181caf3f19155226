#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"
#include "tests/windows/holdings.h"
#include "tests/windows/rounds.h"

namespace driver {
namespace {

bool IsForm(const Window& window) {
  return window.ClassName().starts_with("frm");
}

bool IsDialog(const Window& window) {
  return window.ClassName() == "#32770";
}

void Press(const Window& window, int button) {
  if (const HWND handle = GetDlgItem(window.handle(), button)) PostMessageW(handle, BM_CLICK, 0, 0);
}

/// Does anything that a user can do, in an order that a seed settles.
class RestlessUser {
 public:
  explicit RestlessUser(unsigned seed) : random_(seed) {
    MakeFile(InWork("short.60D"), 700);
    MakeFile(InWork("zeros.60D"), 3 * kBlock);
    CopyTo(Recording("pictures.20d"), InWork("wrong kind.60D"));
    CopyTo(Recording("day.60D"), InWork("cut.60D"));
    Append(InWork("cut.60D"), std::string(kBlock / 2 + 9, '\x7F'));
  }

  /// Does one thing, and checks that the program lives and answers afterwards.
  void Act() {
    const Window front = Front();
    last_ = front.Text();
    const bool isMain = front.handle() == program_->main().handle();
    const bool accepts = FileDialog::Is(front) && !Chance(20);
    if (accepts)
      AcceptFile(front);
    else if (FileDialog::Is(front))
      Press(front, IDCANCEL);
    else if (isMain && Chance(15))
      program_->At(IDC_frmTrimbrook_Command1).ClickAndGoOn();
    else if (isMain && Chance(4))
      program_->PressSaveToCd();
    else if (IsDialog(front) || Chance(25))
      PressAnyButton(front);
    else if (!isMain && Chance(8))
      front.Close();
    else
      UseAnyControl(front);
    AwaitHandled();
    if (accepts && !front.Exists()) ++accepted_;
  }

  /// Leaves all dialogs, opens a sound recording, and notes what the program holds then.
  void Rest() {
    Await("rest", [this] {
      const Window front = Front();
      if (front.handle() == program_->main().handle()) return true;
      if (IsForm(front)) front.Close();
      for (const int button : {IDNO, IDCANCEL, IDOK}) Press(front, button);
      AwaitHandled();
      return false;
    });
    program_->OpenSource(Recording("day.60D"));
    ++accepted_;
    program_->Settle();
    held_.push_back(HoldingsOf(*program_));
    // Wine itself leaves a handle open with each file dialog that is answered.
    held_.back()["handles"] -= accepted_;
  }

  /// Whether the program holds no more than it did after its first third.
  void ExpectNoMoreHeld() const {
    if (held_.size() < 2) return;
    for (const auto& [what, late] : held_.back()) {
      const std::int64_t more = late - held_[held_.size() / 3].at(what);
      EXPECT_LE(more, what == "KB" ? 4096 : 24) << what;
      PrintFigure(more, ("more " + what).c_str());
    }
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
    held_.clear();
    accepted_ = 0;
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
        if (window.IsUsable() && (IsForm(window) || IsDialog(window))) return window;
      RequireLife();
      return {};
    });
  }

  void AcceptFile(const Window& window) {
    const std::string sources[] = {Recording("day.60D"),       Recording("noon.60D"),
                                   Recording("cameras32.60D"), Recording("long.60D"),
                                   InWork("short.60D"),        InWork("zeros.60D"),
                                   InWork("cut.60D"),          InWork("no such.60D"),
                                   InWork("wrong kind.60D"),   "C:\\work"};
    const std::string targets[] = {InWork("restless.60D"), InWork("restless.20D"),
                                   InWork("cut.60D"), "C:\\no such\\folder.60D", "F:\\a.60D"};
    const bool forTarget = window.Text() == "Save New File";
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
    const int way = Any(3);
    if (way == 0) return ClickInto(control);
    for (int count = Any(4); count >= 0; --count)
      way == 1 ? TypeInto(control) : PressKeyIn(control);
  }

  void ClickInto(HWND control) {
    RECT area = {};
    GetClientRect(control, &area);
    const LPARAM point =
        MAKELPARAM(Any(static_cast<int>(area.right) + 1), Any(static_cast<int>(area.bottom) + 1));
    PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(control, WM_LBUTTONUP, 0, point);
  }

  void TypeInto(HWND control) { PostMessageW(control, WM_CHAR, AnyOf(L"0123456789aZ\b\xE9"), 0); }

  void PressKeyIn(HWND control) {
    const WORD keys[] = {VK_LEFT,  VK_RIGHT, VK_UP,    VK_DOWN,   VK_HOME, VK_END,
                         VK_PRIOR, VK_NEXT,  VK_SPACE, VK_RETURN, VK_TAB,  VK_ESCAPE};
    const WORD key = AnyOf(keys);
    PostMessageW(control, WM_KEYDOWN, key, 0);
    PostMessageW(control, WM_KEYUP, key, 0);
  }

  std::vector<std::map<std::string, std::int64_t>> held_;
  int accepted_ = 0;  ///< File dialogs that have been answered with a file.
  std::string last_;  ///< What was done last.
  std::mt19937 random_;
  std::unique_ptr<Trimbrook> program_ = std::make_unique<Trimbrook>();
};

TEST(Restless, TheProgramBearsAnything) {
  constexpr int kShortForm = 150;
  constexpr int kBetweenRests = 50;
  RestlessUser user(1);
  Rounds rounds(kShortForm);
  while (rounds.Next()) {
    user.Act();
    if (rounds.begun() % kBetweenRests == 0) user.Rest();
  }
  user.ExpectNoMoreHeld();
  PrintFigure(rounds.begun(), "actions");
}

}  // namespace
}  // namespace driver
