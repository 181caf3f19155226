#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>

#include "attacks/windows/holdings.h"
#include "attacks/windows/rounds.h"
#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

bool IsForm(const Window& window) {
  return window.ClassName().rfind("frm", 0) == 0;
}

bool IsDialog(const Window& window) {
  return window.ClassName() == "#32770";
}

/// Does anything that a user can do, in an order that a seed settles.
class RestlessUser {
 public:
  explicit RestlessUser(unsigned seed) : random_(seed) {
    MakeFile(InWork("empty.60D"), 0);
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
    const bool accepts = FileDialog::Is(front) && !Chance(20);
    if (accepts)
      AcceptFile(front);
    else if (FileDialog::Is(front))
      Press(front, IDCANCEL);
    else if (IsDialog(front))
      PressAnyButton(front);
    else if (Chance(15) && front.ClassName() == program_->main().ClassName())
      AskForSource();
    else if (Chance(4) && front.ClassName() == program_->main().ClassName())
      AskForWizard();
    else
      Use(front);
    AwaitHandled();
    if (accepts && !front.Exists()) ++accepted_;
  }

  /// Leaves all dialogs, opens a sound recording, and notes what the program holds then.
  void Rest() {
    Await("rest", [this] {
      const Window front = Front();
      if (front.handle() == program_->main().handle()) return true;
      Leave(front);
      AwaitHandled();
      return false;
    });
    program_->OpenSource(Recording("day.60D"));
    ++accepted_;
    program_->Settle();
    held_.push_back(HoldingsOf(*program_));
    // Wine itself leaves a handle open with each file dialog that is answered.
    held_.back().handles -= accepted_;
  }

  /// Whether the program holds no more than it did after its first third.
  void ExpectNoMoreHeld() const {
    if (held_.size() < 2) return;
    const Holdings& early = held_[held_.size() / 3];
    const Holdings& late = held_.back();
    constexpr int kFewMore = 24;
    constexpr int kMoreKilobytes = 4096;
    EXPECT_LE(late.handles, early.handles + kFewMore);
    EXPECT_LE(late.drawing, early.drawing + kFewMore);
    EXPECT_LE(late.windows, early.windows + kFewMore);
    EXPECT_LE(late.kilobytes, early.kilobytes + kMoreKilobytes);
    PrintFigure(late.handles - early.handles, "more handles");
    PrintFigure(late.drawing - early.drawing, "more drawing objects");
    PrintFigure(late.windows - early.windows, "more windows");
    PrintFigure(late.kilobytes - early.kilobytes, "more KB");
  }

 private:
  int Any(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool Chance(int percent) { return Any(100) < percent; }
  template <typename T, std::size_t N>
  T AnyOf(const T (&items)[N]) {
    return items[Any(N)];
  }

  /// Starts the program again when it was left by its "Exit", and raises when it crashed.
  void RequireLife() {
    if (program_->Runs()) return;
    const DWORD code = program_->AwaitEnd();
    if (code != 0)
      throw std::runtime_error("Ended with " + std::to_string(code) + " after: " + last_);
    program_ = std::make_unique<Trimbrook>();
    held_.clear();
    accepted_ = 0;
  }

  /// Waits until all that was posted has been handled. A user can do nothing in a window beneath
  /// another one.
  void AwaitHandled() {
    RequireLife();
    program_->Settle();
    RequireLife();
  }

  /// The window in front that takes input: a program always has one, or it hangs.
  Window Front() {
    return *Await("window that takes input", [this]() -> std::optional<Window> {
      for (const Window& window : WindowsOf(GetProcessId(program_->process())))
        if (window.IsShown() && window.IsEnabled() && (IsForm(window) || IsDialog(window)))
          return window;
      RequireLife();
      return {};
    });
  }

  void AcceptFile(const Window& window) {
    const std::string sources[] = {
        Recording("day.60D"),      Recording("noon.60D"), Recording("cameras32.60D"),
        Recording("pictures.20d"), Recording("long.60D"), InWork("empty.60D"),
        InWork("short.60D"),       InWork("zeros.60D"),   InWork("wrong kind.60D"),
        InWork("cut.60D"),         InWork("no such.60D"), "C:\\work"};
    const std::string targets[] = {InWork("restless.60D"), InWork("restless.20D"),
                                   InWork("cut.60D"), "C:\\no such\\folder.60D", "F:\\a.60D"};
    const bool forTarget = window.Text() == "Save New File";
    try {
      FileDialog(window).Accept(forTarget ? AnyOf(targets) : AnyOf(sources));
    } catch (const std::runtime_error&) {
      // It was about to close.
    }
  }

  void Press(const Window& window, int button) {
    if (const HWND handle = GetDlgItem(window.handle(), button))
      PostMessageW(handle, BM_CLICK, 0, 0);
  }

  std::vector<Window> Usable(const Window& window) {
    std::vector<Window> usable = window.Controls();
    std::erase_if(usable, [](const Window& control) {
      return !control.IsShown() || !control.IsEnabled() ||
             GetDlgCtrlID(control.handle()) == IDC_frmTrimbrook_Command4;  // Ends the program.
    });
    return usable;
  }

  void PressAnyButton(const Window& window) {
    std::vector<Window> buttons = Usable(window);
    std::erase_if(buttons, [](const Window& control) { return control.ClassName() != "Button"; });
    if (buttons.empty()) return;
    PostMessageW(buttons[Any(static_cast<int>(buttons.size()))].handle(), BM_CLICK, 0, 0);
  }

  void AskForSource() { program_->At(IDC_frmTrimbrook_Command1).ClickAndGoOn(); }

  /// Its button is hidden.
  void AskForWizard() {
    PostMessageW(program_->main().handle(), WM_COMMAND,
                 MAKEWPARAM(IDC_frmTrimbrook_Command7, BN_CLICKED),
                 reinterpret_cast<LPARAM>(program_->At(IDC_frmTrimbrook_Command7).handle()));
  }

  void Use(const Window& form) {
    const std::vector<Window> usable = Usable(form);
    if (usable.empty()) return;
    const Window control = usable[Any(static_cast<int>(usable.size()))];
    const int action = Any(4);
    last_ = form.ClassName() + " " + std::to_string(GetDlgCtrlID(control.handle())) + " action " +
            std::to_string(action);
    switch (action) {
      case 0:
        return ClickInto(control);
      case 1:
        return TypeInto(control);
      case 2:
        return PressAnyButton(form);
      default:
        if (form.handle() != program_->main().handle() && Chance(30)) return form.Close();
        return PressKeyIn(control);
    }
  }

  void ClickInto(const Window& control) {
    RECT area = {};
    GetClientRect(control.handle(), &area);
    const LPARAM point =
        MAKELPARAM(Any(static_cast<int>(area.right) + 1), Any(static_cast<int>(area.bottom) + 1));
    PostMessageW(control.handle(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(control.handle(), WM_LBUTTONUP, 0, point);
  }

  void TypeInto(const Window& control) {
    for (int count = Any(4); count >= 0; --count)
      PostMessageW(control.handle(), WM_CHAR, static_cast<WPARAM>("0123456789aZ\b\xE9"[Any(14)]),
                   0);
  }

  void PressKeyIn(const Window& control) {
    const WORD keys[] = {VK_LEFT,  VK_RIGHT, VK_UP,    VK_DOWN,   VK_HOME, VK_END,
                         VK_PRIOR, VK_NEXT,  VK_SPACE, VK_RETURN, VK_TAB,  VK_ESCAPE};
    for (int count = Any(4); count >= 0; --count) {
      const WORD key = AnyOf(keys);
      PostMessageW(control.handle(), WM_KEYDOWN, key, 0);
      PostMessageW(control.handle(), WM_KEYUP, key, 0);
    }
  }

  void Leave(const Window& window) {
    if (IsForm(window)) return window.Close();
    for (const int button : {IDNO, IDCANCEL, IDOK}) Press(window, button);
  }

  std::vector<Holdings> held_;
  /// File dialogs that have been answered with a file.
  int accepted_ = 0;
  /// What was done last.
  std::string last_;
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
