#include "forms/control.h"

#include <algorithm>

#include "forms/accessible_texts.h"
#include "forms/form.h"
#include "platform/runtime_error.h"

namespace forms {
namespace {

const layout::Row& RowWithId(const layout::Form& form, int id) {
  for (const layout::Row& row : form.rows)
    if (row.id == id) return row;
  throw RuntimeError::InvalidProcedureCall(form.name);
}

/// Kinds that do nothing with keys would hide the focus.
bool CanHaveFocus(layout::Kind kind) {
  using layout::Kind;
  constexpr Kind kOnlyShown[] = {Kind::kLabel, Kind::kLine, Kind::kFrame, Kind::kProgressBar,
                                 Kind::kAnimation};
  return std::find(std::begin(kOnlyShown), std::end(kOnlyShown), kind) == std::end(kOnlyShown);
}

std::string OrEmpty(const char* text) {
  return text ? text : "";
}

}  // namespace

Control::Control(Form& form, int id)
    : form_(form),
      row_(&RowWithId(form.layout_, id)),
      caption_(OrEmpty(row_->caption)),
      toolTip_(OrEmpty(row_->toolTip)),
      left_(row_->left),
      top_(row_->top),
      width_(row_->width),
      height_(row_->height),
      visible_(!HasStyle(layout::kHidden)),
      enabled_(!HasStyle(layout::kDisabled)) {
  form_.byId_[id] = this;
}

Control::~Control() {
  if (window_) RemoveWindowSubclass(window_, SubclassProcedure, 0);
}

void Control::SetVisible(bool visible) {
  if (visible == visible_) return;
  if (!visible) LeaveFocus();
  visible_ = visible;
  Refresh();
}

void Control::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  if (!enabled) LeaveFocus();
  enabled_ = enabled;
  Refresh();
}

void Control::SetLeft(int twips) {
  left_ = twips;
  Place();
}

void Control::SetTop(int twips) {
  top_ = twips;
  Place();
}

void Control::SetWidth(int twips) {
  width_ = twips;
  Place();
}

void Control::SetHeight(int twips) {
  height_ = twips;
  Place();
}

void Control::SetCaption(const std::string& caption) {
  // What has not changed would be painted again; a text box may have been typed in.
  if (caption == WindowText()) return;
  caption_ = caption;
  if (window_) SetWindowTextW(window_, Wide(caption).c_str());
}

void Control::SetToolTip(const std::string& text) {
  toolTip_ = text;
  if (window_) form_.toolTips_.Set(window_, text);
}

void Control::SetToolTipSource(std::function<std::string()> source) {
  toolTipSource_ = std::move(source);
}

const std::function<std::string()>* Control::ToolTipSource() const {
  const Control& asked = box_ ? *box_ : *this;
  return asked.toolTipSource_ ? &asked.toolTipSource_ : nullptr;
}

void Control::SetRestingToolTip(bool on) {
  // To deactivate the tool tips is not enough: Wine shows one whose time has come all the same.
  form_.toolTips_.Set(window_, on ? toolTip_ : "");
}

void Control::SetFocus() {
  if (!window_ || !IsUsable()) return;
  if (IsWindowVisible(form_.window_))
    SendMessageW(form_.window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window_), TRUE);
  else
    form_.firstFocus_ = this;
}

bool Control::HasFocus() const {
  return window_ && GetFocus() == window_;
}

bool Control::IsShown() const {
  return visible_ && (!container_ || container_->IsShown());
}

bool Control::IsUsable() const {
  if (!enabled_ || !visible_) return false;
  return (!container_ || container_->IsUsable()) && (!box_ || box_->IsUsable());
}

void Control::Raise(Event event) {
  const auto* handler = form_.HandlerOf(*this, event);
  if (handler && !form_.IsClosed()) form_.Dispatch(*handler);
}

bool Control::HasHandler(Event event) const {
  return form_.HandlerOf(*this, event) != nullptr;
}

LRESULT Control::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
  return window_ ? SendMessageW(window_, message, wParam, lParam) : 0;
}

std::string Control::WindowText() const {
  if (!window_) return caption_;
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
  GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1);
  return Utf8(text);
}

void Control::Attach() {
  if (row_->container) container_ = &form_.ControlById(row_->container);
  if (row_->buddy && row_->kind == layout::Kind::kLabel) box_ = &form_.ControlById(row_->buddy);
  for (Control* other : {container_, box_})
    if (other) other->dependents_.push_back(this);
}

void Control::CreateIn(HWND parent) {
  Attach();
  if (!WindowClass()) return;
  // A button that shows an icon only still has a text: its name.
  const std::string text = caption_.empty() && row_->kind == layout::Kind::kPictureButton
                               ? OrEmpty(row_->name)
                               : caption_;
  DWORD style = WS_CHILD | WindowStyle();
  if (!HasStyle(layout::kNoTabStop) && CanHaveFocus(row_->kind)) style |= WS_TABSTOP;
  if (BeginsGroup()) style |= WS_GROUP;
  const RECT place = PixelRect();
  window_ = CreateWindowExW(ExtendedStyle(), WindowClass(), Wide(text).c_str(), style, place.left,
                            place.top, place.right - place.left, place.bottom - place.top, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id())),
                            GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw RuntimeError::InvalidProcedureCall(form_.layout_.name);
  SetWindowPos(window_, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SetWindowSubclass(window_, SubclassProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
  if (row_->name) SetAccessibleName(window_, row_->name);
  if (ToolTipSource()) form_.toolTips_.SetAsked(window_);
  if (ArrowGroup* group = Group()) group->Add(window_);
  Created();
}

// What is only shown stands by itself: the arrow keys would move the focus to it.
bool Control::BeginsGroup() const {
  const auto self = std::ranges::find(form_.inOrder_, this);
  return HasStyle(layout::kGroup) || !CanHaveFocus(row_->kind) || self == form_.inOrder_.begin() ||
         !CanHaveFocus((*std::prev(self))->row_->kind);
}

RECT Control::PixelRect() const {
  int left = left_;
  int top = top_;
  for (const Control* frame = container_; frame; frame = frame->container_) {
    left += frame->left_;
    top += frame->top_;
  }
  return form_.place_.PixelRect(left, top, width_, height_);
}

void Control::LayOut() {
  if (!window_) return;
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.place_.FontOf(*row_)), TRUE);
  PlaceWindow();
  LaidOut();
}

void Control::PlaceWindow() {
  if (!window_) return;
  const RECT place = WindowPlace(PixelRect());
  RECT now = {};
  GetWindowRect(window_, &now);
  MapWindowPoints(HWND_DESKTOP, form_.window_, reinterpret_cast<POINT*>(&now), 2);
  // Most stand there already when a form is set up, and moving them is what takes time.
  if (EqualRect(&now, &place)) return;
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Control::Place() {
  PlaceWindow();
  if (!window_ || dependents_.empty()) return;
  for (Control* control : dependents_) control->Place();
  InvalidateRect(form_.window_, nullptr, TRUE);
}

void Control::RefreshWindow() {
  if (!window_) return;
  // Windows keeps a hidden control's access key alive unless the control is disabled too.
  EnableWindow(window_, IsUsable());
  ShowWindow(window_, IsShown() ? SW_SHOWNA : SW_HIDE);
  if (ArrowGroup* group = Group()) group->Refresh();
}

void Control::Refresh() {
  RefreshWindow();
  for (Control* control : dependents_) control->Refresh();
}

// A window that is disabled or hidden keeps the focus, and then no key reaches the form.
void Control::LeaveFocus() {
  for (Control* control : dependents_) control->LeaveFocus();
  if (HasFocus()) SendMessageW(form_.window_, WM_NEXTDLGCTL, 0, FALSE);
}

void Control::GotFocus() {
  form_.place_.ScrollIntoView(PixelRect());
  form_.MarkDefaultButton(this);
  if (ArrowGroup* group = Group()) group->SetStop(window_);
}

bool Control::FollowArrow(WPARAM key) {
  const HWND next = Group()->Next(window_, key);
  if (next) SendMessageW(form_.window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
  return next != nullptr;
}

int Control::Pixels(int twips) const {
  return form_.place_.PixelsDown(twips);
}

ArrowGroup* Control::Group() const {
  return HasStyle(layout::kArrows) ? &form_.groups_[row_->container] : nullptr;
}

LRESULT CALLBACK Control::SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR, DWORD_PTR self) {
  Control& control = *reinterpret_cast<Control*>(self);
  if (message == WM_DESTROY && control.row_->name) ForgetAccessibleTexts(window);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, SubclassProcedure, 0);
    control.Destroying();
    control.window_ = nullptr;
    return DefSubclassProc(window, message, wParam, lParam);
  }
  if (message == WM_SETFOCUS) control.GotFocus();
  if (message == WM_MOVE && control.ToolTipSource()) control.form_.toolTips_.Follow(window);
  const std::optional<LRESULT> result = control.OnMessage(message, wParam, lParam);
  return result ? *result : DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace forms
