// Turns a form's layout table into windows. No other code makes controls.
#include <algorithm>
#include <memory>

#include "forms/controls.h"
#include "forms/form.h"
#include "platform/runtime_error.h"

namespace forms {
namespace {

std::unique_ptr<Control> MakeControl(Form& form, const layout::Row& row) {
  using layout::Kind;
  switch (row.kind) {
    case Kind::kLabel:
      return std::make_unique<Label>(form, row.id);
    case Kind::kTextBox:
      return std::make_unique<TextBox>(form, row.id);
    case Kind::kButton:
      return std::make_unique<Button>(form, row.id);
    case Kind::kPictureButton:
      return std::make_unique<PictureButton>(form, row.id);
    case Kind::kCheckBox:
      return std::make_unique<CheckBox>(form, row.id);
    case Kind::kOptionButton:
      return std::make_unique<OptionButton>(form, row.id);
    case Kind::kFrame:
      return std::make_unique<Frame>(form, row.id);
    case Kind::kLine:
      return std::make_unique<Line>(form, row.id);
    case Kind::kSlider:
      return std::make_unique<Slider>(form, row.id);
    case Kind::kUpDown:
      return std::make_unique<UpDown>(form, row.id);
    case Kind::kMonthCalendar:
      return std::make_unique<MonthCalendar>(form, row.id);
    case Kind::kProgressBar:
      return std::make_unique<ProgressBar>(form, row.id);
    case Kind::kAnimation:
      return std::make_unique<Animation>(form, row.id);
    case Kind::kComboBox:
      return std::make_unique<ComboBox>(form, row.id);
    case Kind::kTimer:
      return std::make_unique<Timer>(form, row.id);
  }
  throw RuntimeError::InvalidProcedureCall("forms");
}

/// A dialog template without controls that names the form's own window class. Made as a dialog, the
/// window has all of the dialog manager's keyboard behaviour.
std::vector<DWORD> EmptyTemplate(const layout::Form& form, bool modal) {
  DLGTEMPLATE header = {};
  header.style = WS_CAPTION | WS_SYSMENU | (modal ? WS_POPUP : WS_OVERLAPPED) |
                 (form.canMinimize ? WS_MINIMIZEBOX : 0);
  const std::wstring name = Wide(form.name);
  // Header, no menu, class name, empty title.
  const std::size_t bytes = sizeof header + (name.size() + 3) * sizeof(wchar_t);
  std::vector<DWORD> block(bytes / sizeof(DWORD) + 1);
  auto* at = reinterpret_cast<unsigned char*>(block.data());
  std::copy_n(reinterpret_cast<const unsigned char*>(&header), sizeof header, at);
  std::copy_n(reinterpret_cast<const unsigned char*>(name.data()), name.size() * sizeof(wchar_t),
              at + sizeof header + sizeof(wchar_t));
  return block;
}

HICON LoadIconOf(HINSTANCE program, int icon, int sizeMetric) {
  const int side = GetSystemMetrics(sizeMetric);
  // Not shared: of one icon the system shares one size only.
  return static_cast<HICON>(
      LoadImageW(program, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_DEFAULTCOLOR));
}

void RegisterFormClass(const wchar_t* name, WNDPROC procedure, int icon) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  WNDCLASSEXW form = {};
  form.cbSize = sizeof form;
  if (GetClassInfoExW(program, name, &form)) return;
  form.lpfnWndProc = procedure;
  form.cbWndExtra = DLGWINDOWEXTRA;
  form.hInstance = program;
  form.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  form.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  form.lpszClassName = name;
  if (icon) {
    form.hIcon = LoadIconOf(program, icon, SM_CXICON);
    form.hIconSm = LoadIconOf(program, icon, SM_CXSMICON);
  }
  RegisterClassExW(&form);
}

INT_PTR CALLBACK NoDialogProcedure(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

// Windows would resize a dialog's controls by itself when the DPI changes; ours are laid out anew
// from their twips. The function is newer than the import libraries at hand.
void KeepDpiChangesToOurselves(HWND window) {
  using SetBehavior = BOOL(WINAPI*)(HWND, int, int);
  constexpr int kDisableAll = 1 | 2 | 4;
  const FARPROC found =
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior");
  const auto setBehavior = reinterpret_cast<SetBehavior>(reinterpret_cast<void*>(found));
  if (setBehavior) setBehavior(window, kDisableAll, kDisableAll);
}

}  // namespace

void Form::CreateWindows() {
  const layout::Form& table = layout_;
  const std::wstring name = Wide(table.name);
  RegisterFormClass(name.c_str(), WindowProcedure, table.icon);
  const std::vector<DWORD> block = EmptyTemplate(table, owner_ != nullptr);
  window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                       reinterpret_cast<const DLGTEMPLATE*>(block.data()),
                                       owner_ ? owner_->window_ : nullptr, NoDialogProcedure, 0);
  if (!window_) throw RuntimeError::InvalidProcedureCall(table.name);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  KeepDpiChangesToOurselves(window_);
  SetWindowTextW(window_, Wide(table.caption).c_str());
  toolTips_.Create(window_);
  place_.SetWindow(window_);
  place_.SetDpi(GetDpiForWindow(window_));
  CreateControls();
  LayOut(place_.dpi());
  SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL),
               0);
}

void Form::CreateControls() {
  for (const layout::Row& row : layout_.rows) {
    Control*& control = byId_[row.id];
    if (!control) nameless_.push_back(MakeControl(*this, row));
    inOrder_.push_back(control);
    control->CreateIn(window_);
    if (control->window_ && !control->toolTip_.empty()) control->SetToolTip(control->toolTip_);
    if (control->HasStyle(layout::kDefault)) SendMessageW(window_, DM_SETDEFID, row.id, 0);
  }
  for (Control* control : inOrder_) control->RefreshWindow();
}

void Form::LayOut(UINT dpi) {
  place_.SetDpi(dpi);
  toolTips_.SetDpi(dpi);
  place_.Fit();
  for (Control* control : inOrder_) control->LayOut();
}

}  // namespace forms
