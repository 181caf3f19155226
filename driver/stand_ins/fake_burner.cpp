#include <windows.h>

#include <fstream>
#include <string>

// Stands for the outside burning programs: shows a window with the name of its own executable,
// notes beside that that it was started and each key that it gets, and puts up the eject dialog
// once the file "eject" lies there.
namespace {

std::string folder, name;

void Note(const std::string& line) {
  std::ofstream(folder + name + ".log", std::ios::app) << line << '\n';
}

HWND MakeWindow(const char* title) {
  return CreateWindowExA(0, "FakeBurner", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 300, 120,
                         nullptr, nullptr, nullptr, nullptr);
}

void PutUpEjectDialog() {
  static bool isUp = false;
  const std::string sign = folder + "eject";
  if (isUp || GetFileAttributesA(sign.c_str()) == INVALID_FILE_ATTRIBUTES) return;
  isUp = true;
  MakeWindow("Drag-to-Disc   Eject Options");
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (wParam != VK_MENU)
        Note((GetKeyState(VK_MENU) < 0 ? "Alt+" : "") + std::string(1, static_cast<char>(wParam)));
      return 0;
    case WM_TIMER:
      PutUpEjectDialog();
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}

}  // namespace

int main() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string whole = path;
  const std::size_t slash = whole.rfind('\\');
  folder = whole.substr(0, slash + 1);
  name = whole.substr(slash + 1, whole.rfind('.') - slash - 1);
  Note("started");

  WNDCLASSA about = {};
  about.lpfnWndProc = Procedure;
  about.lpszClassName = "FakeBurner";
  RegisterClassA(&about);
  SetTimer(MakeWindow(name.c_str()), 1, 20, nullptr);
  for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) DispatchMessageA(&message);
}
