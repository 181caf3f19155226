#include "driver/file_dialog.h"

#include <dlgs.h>

#include "driver/await.h"
#include "forms/text.h"

namespace driver {

bool FileDialog::Is(const Window& window) {
  if (window.ClassName() != "#32770") return false;
  return IsWindowVisible(GetDlgItem(window.handle(), cmb13)) != FALSE;
}

Window FileDialog::NameBox() const {
  return window_.Control(cmb13).FirstOfClass("Edit");
}

std::vector<std::string> FileDialog::Filters() const {
  const Window box = window_.Control(cmb1);
  std::vector<std::string> filters;
  const LRESULT count = box.Ask(CB_GETCOUNT);
  for (LRESULT i = 0; i < count; ++i) {
    const auto index = static_cast<WPARAM>(i);
    std::wstring text(static_cast<std::size_t>(box.Ask(CB_GETLBTEXTLEN, index)) + 1, L'\0');
    box.Ask(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    filters.push_back(forms::Utf8(text.c_str()));
  }
  return filters;
}

std::string FileDialog::Filter() const {
  return window_.Control(cmb1).Text();
}

std::string FileDialog::Folder() const {
  return window_.Control(cmb2).Text();
}

void FileDialog::Accept(const std::string& name) const {
  NameBox().SetText(name);
  window_.Control(IDOK).ClickAndGoOn();
}

void FileDialog::Cancel() const {
  window_.Control(IDCANCEL).ClickAndGoOn();
  AwaitGone();
}

void FileDialog::AwaitGone() const {
  Await("end of the file dialog", [&] { return !window_.IsShown(); });
}

}  // namespace driver
