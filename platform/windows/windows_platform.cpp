#include "platform/windows/windows_platform.h"

#include "platform/windows/text.h"
#include "platform/windows/win32.h"

namespace platform {
namespace {

std::string ProgramPath() {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return Utf8(path);
}

}  // namespace

void KeepToLibrariesOfTheSystem() {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
}

WindowsPlatform::WindowsPlatform()
    : bundle_{{*files_, *names_, *dates_, clock_, {}}, *drives_, *registry_, *desktop_, {}} {
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  const std::string path = ProgramPath();
  const std::string file = LastFilePart(path);
  bundle_.programFolder = FolderOf(path);
  bundle_.programName = file.substr(0, file.rfind('.'));
}

}  // namespace platform
