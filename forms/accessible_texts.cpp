#include "forms/accessible_texts.h"

#include <objbase.h>
// After objbase.h, which they need; initguid.h makes oleacc.h define the ids that it names.
#include <initguid.h>
#include <oleacc.h>

#include <array>

namespace forms {
namespace {

constexpr DWORD kClient = static_cast<DWORD>(OBJID_CLIENT);

/// The system's service, kept for the program's life; null where there is none.
IAccPropServices* Services() {
  static IAccPropServices* const services = [] {
    IAccPropServices* made = nullptr;
    CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                     reinterpret_cast<void**>(&made));
    return made;
  }();
  return services;
}

void SetText(HWND control, const MSAAPROPID& property, const std::string& text) {
  if (Services())
    Services()->SetHwndPropStr(control, kClient, CHILDID_SELF, property, Wide(text).c_str());
}

}  // namespace

// A hidden label before the control would name an edit or a slider, but a check box takes its name
// from its caption alone, and captions of camera boxes stay empty. An annotation of the window
// serves all kinds, for MSAA and UI Automation clients alike.
void SetAccessibleName(HWND control, const std::string& name) {
  SetText(control, PROPID_ACC_NAME, name);
}

void SetAccessibleValue(HWND control, const std::string& value) {
  SetText(control, PROPID_ACC_VALUE, value);
  // The control has told its new number already, before this text was there.
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, control, OBJID_CLIENT, CHILDID_SELF);
}

void ForgetAccessibleTexts(HWND control) {
  std::array<MSAAPROPID, 2> texts = {PROPID_ACC_NAME, PROPID_ACC_VALUE};
  if (Services())
    Services()->ClearHwndProps(control, kClient, CHILDID_SELF, texts.data(),
                               static_cast<int>(texts.size()));
}

}  // namespace forms
