#include "driver/file_dialog.h"

#include <dlgs.h>

#include "driver/await.h"

namespace driver {

bool FileDialog::Is(const Window& window) {
  if (window.ClassName() != "#32770") return false;
  return IsWindowVisible(GetDlgItem(window.handle(), cmb13)) != FALSE;
}

std::string FileDialog::Look() const {
  const Window kinds = window_.Control(cmb1);
  return window_.Control(cmb2).Text() + ", " + window_.Control(cmb13).Text() + ", " + kinds.Text() +
         " of " + std::to_string(kinds.Ask(CB_GETCOUNT));
}

void FileDialog::Accept(const std::string& name) const {
  window_.Control(cmb13).SetText(name);
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
