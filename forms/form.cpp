// A form's life, its handlers and what it says to the user.
#include "forms/form.h"

#include <algorithm>
#include <exception>

#include "forms/application.h"
#include "forms/dialogs.h"
#include "forms/form_state.h"
#include "forms/input.h"
#include "forms/text.h"
#include "platform/runtime_error.h"

namespace forms {

Form::Form(const layout::Form& layout) : state_(std::make_unique<State>(layout)) {}

Form::~Form() {
  if (window_) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
  }
}

bool Form::Load(Form* owner) {
  owner_ = owner;
  state_->failed = false;
  Dispatch([this] {
    state_->failed = true;
    CreateWindows();
    Center();
    OnLoad();
    state_->failed = false;
  });
  if (state_->failed) Unload();
  return !IsClosed();
}

void Form::Show() {
  if (!window_ && !Load()) return;
  BeginNewView();
  ShowWindow(window_, SW_SHOW);
  FocusFirst();
  UpdateWindow(window_);
  for (Control* control : state_->inOrder) control->FormShown();
}

void Form::ShowModal(Form& owner) {
  state_->ownersFocus = GetFocus();
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
  state_->wasForeground = GetForegroundWindow() == window_;
  Hide();
}

// The owner comes to the front first: else the system would bring some other program's window
// there.
void Form::Hide() {
  // The owner stays disabled until the handler that still runs has returned: nothing may be begun
  // there in its midst.
  if (owner_ && state_->wasForeground) SetForegroundWindow(owner_->window_);
  ShowWindow(window_, SW_HIDE);
}

void Form::Destroy() {
  const bool front = state_->wasForeground || GetForegroundWindow() == window_;
  if (owner_ && owner_->window_) {
    // Before the window goes, as in `Hide`.
    EnableWindow(owner_->window_, TRUE);
    if (front) SetForegroundWindow(owner_->window_);
    // Brought to the front while it was disabled, it could not hand the focus on to its control.
    if (GetActiveWindow() == owner_->window_)
      SetFocus(IsWindowEnabled(state_->ownersFocus) ? state_->ownersFocus : owner_->window_);
  }
  DestroyWindow(window_);
}

void Form::Dispatch(const std::function<void()>& work) {
  ++state_->running;
  try {
    work();
  } catch (const std::bad_alloc&) {
    ShowApplicationMessage(kOutOfMemory);
  } catch (const std::exception& fault) {
    ShowApplicationMessage(fault.what());
  }
  if (--state_->running == 0 && closing_ && window_) Destroy();
}

void Form::Bind(std::initializer_list<Binding> bindings) {
  for (const Binding& binding : bindings) BindOne(binding.control, binding.event, binding.handler);
}

void Form::BindOne(const Control& control, Event event, std::function<void()> handler) {
  state_->handlers[{&control, event}] = std::move(handler);
}

bool Form::HasHandler(const Control& control, Event event) const {
  return state_->handlers.contains({&control, event});
}

bool Form::Raise(const Control& control, Event event) {
  const auto found = state_->handlers.find({&control, event});
  if (found == state_->handlers.end()) return false;
  if (!IsClosed()) Dispatch(found->second);
  return true;
}

Control& Form::ControlById(int id) {
  const auto found = state_->byId.find(id);
  if (found == state_->byId.end()) throw RuntimeError::SubscriptOutOfRange(state_->layout.name);
  return *found->second;
}

void Form::FocusFirst() {
  Control* asked = state_->firstFocus;
  state_->firstFocus = nullptr;
  const HWND first = asked ? asked->window_ : GetNextDlgTabItem(window_, nullptr, FALSE);
  if (first) SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

Control* Form::FocusedControl() const {
  const auto focused = std::ranges::find_if(state_->inOrder, &Control::HasFocus);
  return focused == state_->inOrder.end() ? nullptr : *focused;
}

void Form::ShowMessage(const std::string& text) {
  ShowMessageBox(VisibleWindow(), text);
}

void Form::ShowApplicationMessage(const std::string& text) {
  ShowMessageBox(VisibleWindow(), text, kApplicationTitle);
}

bool Form::AskYesNo(const std::string& text, bool presumed) {
  return AskYesNoBox(VisibleWindow(), text, presumed);
}

// A box of a window that is not shown (it is being loaded, or was closed) belongs to the window
// beneath.
HWND Form::VisibleWindow() const {
  if (window_ && IsWindowVisible(window_)) return window_;
  return owner_ ? owner_->VisibleWindow() : nullptr;
}

}  // namespace forms
