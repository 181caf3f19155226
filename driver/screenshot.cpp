#include "driver/screenshot.h"

#include <windows.h>

#include <fstream>
#include <vector>

#include "driver/files.h"

namespace driver {
namespace {

BITMAPINFOHEADER ScreenFormat() {
  BITMAPINFOHEADER format = {};
  format.biSize = sizeof format;
  format.biWidth = GetSystemMetrics(SM_CXSCREEN);
  format.biHeight = GetSystemMetrics(SM_CYSCREEN);
  format.biPlanes = 1;
  format.biBitCount = 32;
  format.biSizeImage = static_cast<DWORD>(format.biWidth * format.biHeight * 4);
  return format;
}

std::vector<char> ScreenPixels(const BITMAPINFOHEADER& format) {
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, reinterpret_cast<const BITMAPINFO*>(&format),
                                          DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, format.biWidth, format.biHeight, screen, 0, 0, SRCCOPY);
  GdiFlush();
  const char* first = static_cast<const char*>(bits);
  std::vector<char> pixels(first, first + format.biSizeImage);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return pixels;
}

std::vector<char> StillPixels(const BITMAPINFOHEADER& format) {
  std::vector<char> pixels;
  std::vector<char> later = ScreenPixels(format);
  for (int attempt = 0; attempt < 10 && pixels != later; ++attempt) {
    pixels.swap(later);
    Sleep(250);
    later = ScreenPixels(format);
  }
  return later;
}

}  // namespace

void SaveScreenshot(const std::string& name) {
  const BITMAPINFOHEADER format = ScreenFormat();
  const std::vector<char> pixels = StillPixels(format);
  BITMAPFILEHEADER file = {};
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof file + sizeof format;
  file.bfSize = file.bfOffBits + format.biSizeImage;
  std::ofstream out(kPictures + name + ".bmp", std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof file);
  out.write(reinterpret_cast<const char*>(&format), sizeof format);
  out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
}

}  // namespace driver
