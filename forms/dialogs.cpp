#include "forms/dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <cwctype>

#include "forms/long_work.h"
#include "platform/windows/paths.h"

namespace forms {
namespace {

constexpr std::size_t kLongestPath = 32768;

/// "a|b" as the dialogs want it: each piece ends in a zero, and one more ends the list.
std::wstring FilterBlock(const std::string& filter) {
  std::wstring block = Wide(filter) + L'|';
  std::replace(block.begin(), block.end(), L'|', L'\0');
  return block;
}

bool HasEnding(const std::wstring& path, const std::wstring& ending) {
  if (path.size() < ending.size()) return false;
  return _wcsicmp(path.c_str() + path.size() - ending.size(), ending.c_str()) == 0;
}

bool MayReplace(HWND owner, const std::wstring& path, const std::wstring& title) {
  // With its ending the path may have become too long for the system's calls.
  if (GetFileAttributesW(platform::WidePath(Utf8(path)).c_str()) == INVALID_FILE_ATTRIBUTES)
    return true;
  const std::wstring question = path + L" already exists.\nDo you want to replace it?";
  return MessageBoxW(owner, question.c_str(), title.c_str(),
                     MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

/// The texts that an OPENFILENAMEW points to, and the path that it fills in.
struct Request {
  explicit Request(HWND owner, const FileQuestion& question)
      : title(Wide(question.title)),
        filter(FilterBlock(question.filter)),
        folder(Wide(question.initialFolder)),
        path(kLongestPath, L'\0') {
    names.lStructSize = sizeof names;
    names.hwndOwner = owner;
    names.lpstrTitle = title.c_str();
    names.lpstrFilter = filter.c_str();
    names.nFilterIndex = static_cast<DWORD>(question.firstFilter);
    names.lpstrInitialDir = folder.c_str();
    names.lpstrFile = path.data();
    names.nMaxFile = static_cast<DWORD>(path.size());
    names.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_ENABLESIZING;
  }
  std::wstring Chosen() const { return path.substr(0, path.find(L'\0')); }

  OPENFILENAMEW names = {};
  std::wstring title, filter, folder, path;
};

/// Brings the program's current folder back: the dialog for opening files moves it to the folder
/// that it shows, whatever it is told, and a folder that is current cannot be removed.
class KeptFolder {
 public:
  KeptFolder() { GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data()); }
  ~KeptFolder() { SetCurrentDirectoryW(folder_.c_str()); }
  KeptFolder(const KeptFolder&) = delete;
  KeptFolder& operator=(const KeptFolder&) = delete;

 private:
  std::wstring folder_ = std::wstring(kLongestPath, L'\0');
};

}  // namespace

void ShowMessageBox(HWND owner, const std::string& text, Tone tone, const char* title) {
  const TaskbarPause pause;
  MessageBoxW(owner, Wide(text).c_str(), Wide(title).c_str(),
              MB_OK | (tone == Tone::kError ? MB_ICONERROR : MB_ICONWARNING));
}

int AskBox(HWND owner, const std::string& text, UINT buttons) {
  const TaskbarPause pause;
  return MessageBoxW(owner, Wide(text).c_str(), Wide(kMessageTitle).c_str(),
                     buttons | MB_ICONQUESTION);
}

std::optional<std::string> AskOpenFile(HWND owner, const FileQuestion& question) {
  const KeptFolder folder;
  Request request(owner, question);
  if (!GetOpenFileNameW(&request.names)) return {};
  return Utf8(request.Chosen());
}

// The dialog's own question comes before any ending is appended, and it appends none to a name that
// has another one: so it would ask about one file, and another would be replaced. Nor is it told of
// a default ending, which Wine's dialog appends in small letters.
std::optional<std::string> AskSaveFile(HWND owner, const FileQuestion& question) {
  const std::wstring ending = Wide(question.ending);
  Request request(owner, question);
  for (;;) {
    if (!GetSaveFileNameW(&request.names)) return {};
    std::wstring chosen = request.Chosen();
    if (!HasEnding(chosen, ending)) chosen += ending;
    if (MayReplace(owner, chosen, request.title)) return Utf8(chosen);
    // Asked again, with what was chosen still in the name's box.
    chosen.resize(std::min(chosen.size(), kLongestPath - 1));
    std::copy_n(chosen.c_str(), chosen.size() + 1, request.path.begin());
  }
}

}  // namespace forms
