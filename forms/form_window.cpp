// The window of a form: its messages, and how the keyboard reaches it.
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "forms/application.h"
#include "forms/buttons.h"
#include "forms/form.h"
#include "forms/long_work.h"

namespace forms {
namespace {

constexpr LRESULT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;

// Over a control without the focus the wheel scrolls the form, as it does beside the controls: a
// range must not move because the pointer happens to rest on a slider, nor because the focus does.
HWND TargetOfWheel(const MSG& message, HWND form) {
  const POINT at = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  return GetFocus() == message.hwnd && WindowFromPoint(at) == message.hwnd ? message.hwnd : form;
}

}  // namespace

Form* Form::FromWindow(HWND window) {
  // Other windows of this thread (message boxes, file dialogs) use that place for their own.
  const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
  if (!window || procedure != WindowProcedure) return nullptr;
  return reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT CALLBACK Form::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // Null for the first messages, before the window's creation has returned.
  auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (form) {
    if (const auto result = form->Handle(message, wParam, lParam)) return *result;
  }
  const LRESULT result = DefDlgProcW(window, message, wParam, lParam);
  if (form && message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    form->WindowGone();
  }
  return result;
}

std::optional<LRESULT> Form::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      OnCommandMessage(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_NOTIFY: {
      const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
      if (header.code == TTN_GETDISPINFOW) GiveToolTip(*reinterpret_cast<NMTTDISPINFOW*>(lParam));
      Control* control = FindControl(static_cast<int>(header.idFrom));
      return control && control->window_ == header.hwndFrom ? control->OnNotify(header) : 0;
    }
    case WM_HSCROLL:
    case WM_VSCROLL:
      if (!lParam)
        place_.OnScrollBar(message == WM_VSCROLL, LOWORD(wParam));
      else if (Control* control = FindControl(GetDlgCtrlID(reinterpret_cast<HWND>(lParam))))
        control->OnScroll(LOWORD(wParam));
      return 0;
    case WM_MOUSEWHEEL:
      place_.OnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return 0;
    case WM_DROPFILES:
      OnDropMessage(reinterpret_cast<HDROP>(wParam));
      return 0;
    case WM_TIMER:
      if (Control* control = FindControl(static_cast<int>(wParam))) control->OnTimer();
      return 0;
    case WM_SYSCOMMAND:
      return OnSystemCommand(wParam & 0xFFF0, lParam);
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE || IsWindowEnabled(window_)) return {};
      // A disabled window hears no key, and what is above it must be answered.
      SetForegroundWindow(WindowAbove());
      return 0;
    case WM_CLOSE:
      Close();
      return 0;
    case WM_QUERYENDSESSION:
      return SystemHold::IsUp() ? FALSE : TRUE;
    case WM_ENDSESSION:
      if (wParam) Dispatch([this] { OnEndSession(); });
      return 0;
    case DM_SETDEFID:
      defaultButton_ = static_cast<int>(wParam);
      return {};
    case WM_SETCURSOR:
      if (!hourglass_) return {};
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_DPICHANGED: {
      const RECT& suggested = *reinterpret_cast<const RECT*>(lParam);
      place_.MoveTo(suggested.left, suggested.top);
      LayOut(LOWORD(wParam));
      return 0;
    }
    case WM_SETTINGCHANGE:
      OnSettingChange(wParam);
      return {};
    case WM_SIZE:
      if (wParam == SIZE_RESTORED && std::exchange(outdated_, false))
        OnSettingChange(SPI_SETNONCLIENTMETRICS);
      return {};
    case WM_SYSCOLORCHANGE:
      // Windows tells the outer window only, but controls keep brushes of the old colours.
      for (const Control* control : inOrder_) control->Send(message, wParam, lParam);
      return {};
    default:
      return {};
  }
}

void Form::OnCommandMessage(WORD id, WORD code) {
  // A window above must be answered first, and long work come to its end; other programs reach the
  // buttons all the same.
  if (code == BN_CLICKED && (busy_ || !IsWindowEnabled(window_))) return;
  if (id == IDCANCEL) {
    PressCancel();
    return;
  }
  Control* control = FindControl(id);
  if (!control || !control->window_) return;
  // Enter on a form whose default button is disabled arrives here all the same. A control that is
  // not shown can only be meant by another program, which may reach its handler.
  const bool isMeant = !control->IsShown() && code == BN_CLICKED;
  if (isMeant || IsWindowEnabled(control->window_)) control->OnCommand(code);
}

void Form::PressCancel() {
  for (Control* control : inOrder_)
    if (control->HasStyle(layout::kCancel) && control->IsUsable()) {
      control->OnCommand(BN_CLICKED);
      return;
    }
}

// What a tip tells may have to be read, which must not come into the midst of other reading.
void Form::GiveToolTip(NMTTDISPINFOW& question) {
  const Control* control = FindControl(ToolTips::ControlOf(question));
  const auto* source = control ? control->ToolTipSource() : nullptr;
  tipText_.clear();
  if (source && running_ == 0 && IsWindowEnabled(window_))
    Dispatch([&] { tipText_ = Wide((*source)()); });
  question.lpszText = tipText_.data();
}

void Form::OnSettingChange(WPARAM setting) {
  if (IsIconic(window_)) {
    outdated_ = true;
  } else if (setting == SPI_SETNONCLIENTMETRICS) {
    LayOut(place_.dpi());
    place_.MoveInside();
  } else if (setting == SPI_SETWORKAREA) {
    place_.Fit();
  }
}

std::optional<LRESULT> Form::OnSystemCommand(WPARAM command, LPARAM key) {
  // These windows have no menu that Alt or F10 alone could open, but their menu mode would hold up
  // a save until the next key.
  if (command == SC_KEYMENU && key == 0) return 0;
  // The program has one button in the taskbar, that of the outermost window. Minimised by itself, a
  // window above would become a stub on the desktop.
  if (command == SC_MINIMIZE && owner_) {
    ShowWindow(GetAncestor(window_, GA_ROOTOWNER), SW_MINIMIZE);
    return 0;
  }
  // Windows would leave a disabled window as it is, and what is above it behind other programs.
  if (command == SC_RESTORE && !IsWindowEnabled(window_)) {
    ShowWindow(window_, SW_RESTORE);
    SetForegroundWindow(WindowAbove());
    return 0;
  }
  return {};
}

// Wine knows no GW_ENABLEDPOPUP, and GetLastActivePopup may answer the disabled window itself.
HWND Form::WindowAbove() {
  HWND above = nullptr;
  const auto find = [](HWND window, LPARAM found) -> BOOL {
    const Form* form = FromWindow(window);
    // A tool tip has no caption.
    const bool hasCaption = (GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    const bool isUsable = hasCaption && IsWindowVisible(window) && IsWindowEnabled(window);
    if (!isUsable || (form && form->IsClosed())) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  };
  EnumThreadWindows(GetCurrentThreadId(), find, reinterpret_cast<LPARAM>(&above));
  return above;
}

void Form::WindowGone() {
  window_ = nullptr;
  place_.SetWindow(nullptr);
  closing_ = false;
  inOrder_.clear();
  groups_.clear();
  toolTips_.Forget();
  if (!owner_) PostQuitMessage(0);
}

const EventTable::Handler* EventTable::HandlerOf(WPARAM virtualKey, bool inText) const {
  const auto held = [](int key, int flag) { return GetKeyState(key) < 0 ? flag : 0; };
  const int modifiers = held(VK_CONTROL, FCONTROL) | held(VK_SHIFT, FSHIFT) | held(VK_MENU, FALT);
  const auto found = std::ranges::find_if(keys_, [&](const Key& key) {
    return key.virtualKey == virtualKey && key.modifiers == modifiers && (key.inText || !inText);
  });
  return found == keys_.end() ? nullptr : &found->handler;
}

bool Form::PressKey(const MSG& message) {
  if (message.message != WM_KEYDOWN || !IsWindowEnabled(window_) || IsClosed()) return false;
  const Control* focused = FocusedControl();
  const bool inText = focused && focused->row().kind == layout::Kind::kTextBox;
  const Handler* handler = HandlerOf(message.wParam, inText);
  if (handler) Dispatch(*handler);
  return handler != nullptr;
}

void Form::OnDropMessage(HDROP drop) {
  std::wstring path(DragQueryFileW(drop, 0, nullptr, 0), L'\0');
  DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size()) + 1);
  DragFinish(drop);
  if (busy_ || IsClosed() || !IsWindowEnabled(window_)) return;
  // Whoever dropped it may have to answer a question next.
  SetForegroundWindow(window_);
  Dispatch([&] { OnFileDropped(Utf8(path)); });
}

void Form::SetHourglass(bool on) {
  hourglass_ = on;
  POINT pointer = {};
  GetCursorPos(&pointer);
  if (window_ && GetAncestor(WindowFromPoint(pointer), GA_ROOT) == window_)
    SetCursor(LoadCursorW(nullptr, on ? IDC_WAIT : IDC_ARROW));
}

void Form::FlashTaskbar() {
  if (IsClosed() || GetForegroundWindow() == window_) return;
  // A modal window has no taskbar button of its own.
  FLASHWINFO flash = {};
  flash.cbSize = sizeof flash;
  flash.hwnd = GetAncestor(window_, GA_ROOTOWNER);
  flash.dwFlags = FLASHW_TRAY | FLASHW_TIMERNOFG;
  FlashWindowEx(&flash);
}

/// Windows takes the mark from a button when the focus goes, but not when it went to a dialog and
/// comes back elsewhere: there would be two.
void Form::MarkDefaultButton(const Control* focused) {
  const bool isButton = (focused->Send(WM_GETDLGCODE) & kPushButton) != 0;
  for (Control* control : inOrder_)
    control->ShowAsDefault(isButton ? control == focused : control->id() == defaultButton_);
}

bool TranslateForForm(MSG& message) {
  const HWND root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  Form* form = Form::FromWindow(root);
  if (!form) return false;
  if (form->busy_ && form->busy_->Drops(message)) return true;
  if (message.message == WM_MOUSEWHEEL || message.message == WM_MOUSEHWHEEL)
    message.hwnd = TargetOfWheel(message, root);
  return form->PressKey(message) || IsDialogMessageW(root, &message);
}

}  // namespace forms
