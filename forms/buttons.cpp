#include "forms/buttons.h"

#include "forms/form.h"

namespace forms {
namespace {

constexpr int kIconSide = 240;  // Twips.

/// Draws an icon in the middle of an area, paled by what lies beneath.
void DrawPaled(HDC target, HICON icon, const RECT& area, int side) {
  const BLENDFUNCTION paling = {AC_SRC_OVER, 0, 100, 0};
  const int left = (area.right - side) / 2;
  const int top = (area.bottom - side) / 2;
  const HDC memory = CreateCompatibleDC(target);
  const HBITMAP picture = CreateCompatibleBitmap(target, side, side);
  const HGDIOBJ before = SelectObject(memory, picture);
  BitBlt(memory, 0, 0, side, side, target, left, top, SRCCOPY);
  DrawIconEx(memory, 0, 0, icon, side, side, 0, nullptr, DI_NORMAL);
  GdiAlphaBlend(target, left, top, side, side, memory, 0, 0, side, side, paling);
  SelectObject(memory, before);
  DeleteObject(picture);
  DeleteDC(memory);
}

}  // namespace

void Button::SetDefault() {
  if (window()) SendMessageW(form().window(), DM_SETDEFID, static_cast<WPARAM>(id()), 0);
}

DWORD Button::WindowStyle() const {
  return HasStyle(layout::kDefault) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
}

void Button::ShowAsDefault(bool on) {
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE));
  const DWORD type = on ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  if ((style & BS_TYPEMASK) == type) return;
  Send(BM_SETSTYLE, LOWORD((style & ~static_cast<DWORD>(BS_TYPEMASK)) | type), TRUE);
}

void Button::OnCommand(WORD code) {
  if (code == BN_CLICKED) Raise(Event::kClick);
}

PictureButton::~PictureButton() {
  if (icon_) DestroyIcon(icon_);
}

DWORD PictureButton::WindowStyle() const {
  return Button::WindowStyle() | BS_ICON;
}

void PictureButton::LaidOut() {
  const int side = Pixels(kIconSide);
  const HANDLE made = LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(row().resource),
                                 IMAGE_ICON, side, side, LR_DEFAULTCOLOR);
  if (icon_) DestroyIcon(icon_);
  icon_ = static_cast<HICON>(made);
  HandIconOver(IsWindowEnabled(window()));
}

void PictureButton::HandIconOver(bool enabled) {
  static const HICON empty = [] {
    const BYTE outside = 0xFF;
    const BYTE black = 0;
    return CreateIcon(GetModuleHandleW(nullptr), 1, 1, 1, 1, &outside, &black);
  }();
  Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(enabled ? icon_ : empty));
}

std::optional<LRESULT> PictureButton::OnMessage(UINT message, WPARAM wParam, LPARAM) {
  if (message == WM_ENABLE) HandIconOver(wParam != 0);
  return {};
}

LRESULT PictureButton::OnNotify(const NMHDR& header) {
  if (header.code != NM_CUSTOMDRAW || IsWindowEnabled(window())) return CDRF_DODEFAULT;
  const auto& draw = reinterpret_cast<const NMCUSTOMDRAW&>(header);
  if (draw.dwDrawStage != CDDS_POSTPAINT) return CDRF_NOTIFYPOSTPAINT;
  RECT client = {};
  GetClientRect(window(), &client);
  DrawPaled(draw.hdc, icon_, client, Pixels(kIconSide));
  return CDRF_DODEFAULT;
}

bool CheckBox::Value() const {
  return window() ? Send(BM_GETCHECK) == BST_CHECKED : value_;
}

void CheckBox::SetValue(bool ticked) {
  value_ = ticked;
  Send(BM_SETCHECK, ticked ? BST_CHECKED : BST_UNCHECKED);
}

void CheckBox::Created() {
  SetValue(value_);
}

// The system's tick does not grow with the text: without a caption of its own, it stands beside
// what comes after the box.
void CheckBox::LaidOut() {
  if (!caption().empty()) return;
  constexpr int kTickSide = 13;  // Pixels at 96 dots per inch.
  const int tick =
      MulDiv(kTickSide, static_cast<int>(form().place().dpi()), USER_DEFAULT_SCREEN_DPI);
  RECT client = {};
  GetClientRect(window(), &client);
  const bool roomy = client.right > tick + tick / 4;
  const LONG_PTR style = GetWindowLongPtrW(window(), GWL_STYLE);
  SetWindowLongPtrW(
      window(), GWL_STYLE,
      roomy ? style | BS_RIGHTBUTTON : style & ~static_cast<LONG_PTR>(BS_RIGHTBUTTON));
}

void CheckBox::OnCommand(WORD code) {
  if (code == BN_CLICKED) Raise(Event::kClick);
}

// Windows marks the focus around the caption, so that without one nothing would show it.
LRESULT CheckBox::OnNotify(const NMHDR& header) {
  if (header.code != NM_CUSTOMDRAW || !caption().empty()) return CDRF_DODEFAULT;
  const auto& draw = reinterpret_cast<const NMCUSTOMDRAW&>(header);
  if (draw.dwDrawStage != CDDS_POSTPAINT) return CDRF_NOTIFYPOSTPAINT;
  RECT client = {};
  GetClientRect(window(), &client);
  if (HasFocus()) DrawFocusRect(draw.hdc, &client);
  return CDRF_DODEFAULT;
}

std::optional<LRESULT> CheckBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!HasStyle(layout::kArrows)) return {};
  if (message == WM_GETDLGCODE)
    return DefSubclassProc(window(), message, wParam, lParam) | DLGC_WANTARROWS;
  return message == WM_KEYDOWN && FollowArrow(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
}

bool OptionButton::Value() const {
  return Send(BM_GETCHECK) == BST_CHECKED;
}

void OptionButton::SetValue(bool chosen) {
  Send(BM_SETCHECK, chosen ? BST_CHECKED : BST_UNCHECKED);
}

void OptionButton::OnCommand(WORD code) {
  if (code == BN_CLICKED) Raise(Event::kClick);
}

void ComboBox::AddItem(const std::string& text) {
  items_.push_back(text);
  Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

int ComboBox::ListIndex() const {
  return window() ? static_cast<int>(Send(CB_GETCURSEL)) : index_;
}

void ComboBox::SetListIndex(int index) {
  index_ = index;
  Send(CB_SETCURSEL, static_cast<WPARAM>(index));
}

std::string ComboBox::Text() const {
  const int index = ListIndex();
  return index < 0 || index >= ListCount() ? std::string()
                                           : items_[static_cast<std::size_t>(index)];
}

void ComboBox::Created() {
  for (const std::string& text : items_)
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
  SetListIndex(index_);
}

void ComboBox::OnCommand(WORD code) {
  if (code == CBN_SELCHANGE) Raise(Event::kClick);
}

// The window's height is that of the list when it is dropped down.
RECT ComboBox::WindowPlace(RECT place) const {
  constexpr int kLines = 9;
  place.bottom += (kLines - 1) * (place.bottom - place.top);
  return place;
}

}  // namespace forms
