#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// Stands for the outside burning programs: shows a window with the name of its own executable,
// notes beside that that it was started and each key that it gets, and puts up the eject dialog
// when it is told to by WM_APP.
namespace {

const std::filesystem::path program = _pgmptr;

void Note(const std::string& line) {
  std::ofstream(std::filesystem::path(program).replace_extension("log"), std::ios::app)
      << line << '\n';
}

void MakeWindow(const std::string& title) {
  CreateWindowExA(0, "FakeBurner", title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 300,
                  120, nullptr, nullptr, nullptr, nullptr);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (wParam != VK_MENU)
        Note((GetKeyState(VK_MENU) < 0 ? "Alt+" : "") + std::string(1, static_cast<char>(wParam)));
      return 0;
    case WM_APP:
      MakeWindow("Drag-to-Disc   Eject Options");
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
  Note("started");
  WNDCLASSA about = {};
  about.lpfnWndProc = Procedure;
  about.lpszClassName = "FakeBurner";
  RegisterClassA(&about);
  MakeWindow(program.stem().string());
  for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) DispatchMessageA(&message);
}
