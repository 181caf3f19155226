#include "forms/tool_tips.h"

namespace forms {
namespace {

/// The tool that is a control.
TTTOOLINFOW ToolOf(HWND control) {
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

/// The tool that is a control's place on its parent.
TTTOOLINFOW PlaceOf(HWND control) {
  TTTOOLINFOW tool = ToolOf(control);
  tool.uFlags = TTF_SUBCLASS;
  tool.uId = static_cast<UINT_PTR>(GetDlgCtrlID(control));
  GetWindowRect(control, &tool.rect);
  MapWindowPoints(nullptr, tool.hwnd, reinterpret_cast<POINT*>(&tool.rect), 2);
  return tool;
}

}  // namespace

void ToolTips::Create(HWND owner) {
  window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, owner, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
}

void ToolTips::SetDpi(UINT dpi) {
  constexpr int kWidestTip = 600;  // Pixels at 96 dots per inch.
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0,
               MulDiv(kWidestTip, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI));
}

void ToolTips::Set(HWND control, const std::string& text) {
  if (!window_) return;
  TTTOOLINFOW tool = ToolOf(control);
  // Without a buffer: the text that is there is not asked for.
  const bool there = SendMessageW(window_, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
  std::wstring wide = Wide(text);
  tool.lpszText = wide.data();
  const UINT message = wide.empty() ? TTM_DELTOOLW : there ? TTM_UPDATETIPTEXTW : TTM_ADDTOOLW;
  SendMessageW(window_, message, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::SetAsked(HWND control) {
  TTTOOLINFOW tool = ToolOf(control);
  tool.lpszText = LPSTR_TEXTCALLBACKW;
  SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  tool = PlaceOf(control);
  tool.lpszText = LPSTR_TEXTCALLBACKW;
  SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::Follow(HWND control) {
  TTTOOLINFOW tool = PlaceOf(control);
  SendMessageW(window_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

int ToolTips::ControlOf(const NMTTDISPINFOW& question) {
  const UINT_PTR asked = question.hdr.idFrom;
  return question.uFlags & TTF_IDISHWND ? GetDlgCtrlID(reinterpret_cast<HWND>(asked))
                                        : static_cast<int>(asked);
}

}  // namespace forms
