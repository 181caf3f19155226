#include "forms/accessible_name.h"

#include <objbase.h>
// After objbase.h, which they need; initguid.h makes oleacc.h define the ids that it names.
#include <initguid.h>
#include <oleacc.h>

#include "forms/text.h"

namespace forms {
namespace {

constexpr DWORD kClient = static_cast<DWORD>(OBJID_CLIENT);

template <typename Work>
void WithServices(Work work) {
  IAccPropServices* services = nullptr;
  if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IAccPropServices, reinterpret_cast<void**>(&services))))
    return;
  work(*services);
  services->Release();
}

}  // namespace

// A hidden label before the control would name an edit or a slider, but a check box takes its name
// from its caption alone, and captions of camera boxes stay empty. An annotation of the window's
// name serves all kinds, for MSAA and UI Automation clients alike.
void SetAccessibleName(HWND control, const std::string& name) {
  WithServices([&](IAccPropServices& services) {
    services.SetHwndPropStr(control, kClient, CHILDID_SELF, PROPID_ACC_NAME, Wide(name).c_str());
  });
}

void ForgetAccessibleName(HWND control) {
  WithServices([&](IAccPropServices& services) {
    MSAAPROPID name = PROPID_ACC_NAME;
    services.ClearHwndProps(control, kClient, CHILDID_SELF, &name, 1);
  });
}

}  // namespace forms
