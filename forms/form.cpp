// A form's life, its handlers and what it says to the user.
#include "forms/form.h"

#include <algorithm>
#include <exception>

#include "forms/application.h"
#include "forms/input.h"
#include "platform/runtime_error.h"

namespace forms {

Form::~Form() {
  if (window_) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
  }
}

bool Form::Load(Form* owner) {
  owner_ = owner;
  failed_ = false;
  Dispatch([this] {
    failed_ = true;
    CreateWindows();
    place_.Center(owner_ ? owner_->VisibleWindow() : nullptr);
    if (!owner_) place_.StandApart();
    OnLoad();
    failed_ = false;
  });
  if (failed_) Unload();
  return !IsClosed();
}

void Form::Show() {
  if (!window_ && !Load()) return;
  BeginNewView();
  ShowWindow(window_, SW_SHOW);
  FocusFirst();
  place_.ScrollTo(0, 0);  // Where reading begins, wherever the focus is.
  UpdateWindow(window_);
  for (Control* control : inOrder_) control->FormShown();
}

void Form::ShowModal(Form& owner) {
  ownersFocus_ = GetFocus();
  // Before the load, which may let messages run: the owner must not open another window meanwhile.
  EnableWindow(owner.window_, FALSE);
  if (!Load(&owner)) {
    EnableWindow(owner.window_, TRUE);
    return;
  }
  Show();
  RunUntilClosed();
}

void Form::RunUntilClosed() {
  MSG message;
  while (window_) {
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      Unload();
      return;
    }
    HandleMessage(message);
  }
}

void Form::Close() {
  // A disabled window has a box or a window above it that must be answered first.
  if (IsClosed() || !IsWindowEnabled(window_)) return;
  bool may = true;
  Dispatch([&] { may = OnQueryUnload(); });
  if (may) Unload();
}

void Form::Unload() {
  if (IsClosed()) return;
  closing_ = true;
  Dispatch([this] { OnUnload(); });
  if (!window_) return;  // No handler was running, so that the dispatch has seen to it.
  wasForeground_ = GetForegroundWindow() == window_;
  Hide();
}

// The owner comes to the front first: else the system would bring some other program's window
// there.
void Form::Hide() {
  // The owner stays disabled until the handler that still runs has returned: nothing may be begun
  // there in its midst.
  if (owner_ && wasForeground_) SetForegroundWindow(owner_->window_);
  ShowWindow(window_, SW_HIDE);
}

void Form::Destroy() {
  const bool front = wasForeground_ || GetForegroundWindow() == window_;
  if (owner_ && owner_->window_) {
    // Before the window goes, as in `Hide`.
    EnableWindow(owner_->window_, TRUE);
    if (front) SetForegroundWindow(owner_->window_);
    // Brought to the front while it was disabled, it could not hand the focus on to its control.
    if (GetActiveWindow() == owner_->window_)
      SetFocus(IsWindowEnabled(ownersFocus_) ? ownersFocus_ : owner_->window_);
  }
  DestroyWindow(window_);
}

void Form::Dispatch(const std::function<void()>& work) {
  ++running_;
  try {
    work();
  } catch (const std::bad_alloc&) {
    ShowApplicationMessage(kOutOfMemory);
  } catch (const std::exception& fault) {
    ShowApplicationMessage(fault.what());
  }
  if (--running_ == 0 && closing_ && window_) Destroy();
}

Control& Form::ControlById(int id) {
  Control* control = FindControl(id);
  if (!control) throw RuntimeError::SubscriptOutOfRange(layout_.name);
  return *control;
}

Control* Form::FindControl(int id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : found->second;
}

void Form::FocusFirst() {
  Control* asked = firstFocus_;
  firstFocus_ = nullptr;
  const HWND first = asked ? asked->window_ : GetNextDlgTabItem(window_, nullptr, FALSE);
  if (first) SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

Control* Form::FocusedControl() const {
  const auto focused = std::ranges::find_if(inOrder_, &Control::HasFocus);
  return focused == inOrder_.end() ? nullptr : *focused;
}

void Form::ShowMessage(const std::string& text, Tone tone) {
  ShowMessageBox(VisibleWindow(), text, tone);
}

void Form::ShowApplicationMessage(const std::string& text) {
  ShowMessageBox(VisibleWindow(), text, Tone::kError, kApplicationTitle);
}

bool Form::AskYesNo(const std::string& text, bool presumed) {
  const UINT buttons = MB_YESNO | (presumed ? MB_DEFBUTTON1 : MB_DEFBUTTON2);
  return AskBox(VisibleWindow(), text, buttons) == IDYES;
}

std::optional<bool> Form::AskYesNoCancel(const std::string& text) {
  const int answer = AskBox(VisibleWindow(), text, MB_YESNOCANCEL);
  return answer == IDCANCEL ? std::optional<bool>() : answer == IDYES;
}

// A box of a window that is not shown (it is being loaded, or was closed) belongs to the window
// beneath.
HWND Form::VisibleWindow() const {
  if (window_ && IsWindowVisible(window_)) return window_;
  return owner_ ? owner_->VisibleWindow() : nullptr;
}

}  // namespace forms
