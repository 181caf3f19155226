#include <algorithm>

#include "forms/displays.h"
#include "forms/form.h"
// After windows.h, which it needs. Sound is no matter here.
#define NOMSACM
#include <vfw.h>

namespace forms {
namespace {

constexpr LONG kMostFrames = 250;

DWORD ColorsOf(const BITMAPINFOHEADER& dib) {
  if (dib.biBitCount > 8) return 0;
  return dib.biClrUsed ? dib.biClrUsed : 1U << dib.biBitCount;
}

/// Bytes before the pixels: the header and the palette.
std::size_t HeaderSize(const BITMAPINFOHEADER& dib) {
  return dib.biSize + ColorsOf(dib) * sizeof(RGBQUAD);
}

std::size_t PixelsSize(const BITMAPINFOHEADER& dib) {
  const std::size_t row = (static_cast<std::size_t>(dib.biWidth) * dib.biBitCount + 31) / 32 * 4;
  return row * static_cast<std::size_t>(dib.biHeight);
}

/// The system's calls that read clips. Their library is none of those that Windows itself has
/// always loaded: one of that name beside the program must not take its place.
class ClipLibrary {
 public:
  template <typename Call>
  void Find(Call& call, const char* name) {
    auto* found = library_ ? reinterpret_cast<void*>(GetProcAddress(library_, name)) : nullptr;
    call = reinterpret_cast<Call>(found);
    isWhole_ = isWhole_ && call;
  }
  ClipLibrary() {
    Find(init, "AVIFileInit");
    Find(open, "AVIStreamOpenFromFileW");
    Find(info, "AVIStreamInfoW");
    Find(length, "AVIStreamLength");
    Find(openFrames, "AVIStreamGetFrameOpen");
    Find(frame, "AVIStreamGetFrame");
    Find(closeFrames, "AVIStreamGetFrameClose");
    Find(release, "AVIStreamRelease");
    Find(exit, "AVIFileExit");
  }
  bool IsWhole() const { return isWhole_; }

  decltype(&AVIFileInit) init;
  decltype(&AVIStreamOpenFromFileW) open;
  decltype(&AVIStreamInfoW) info;
  decltype(&AVIStreamLength) length;
  decltype(&AVIStreamGetFrameOpen) openFrames;
  decltype(&AVIStreamGetFrame) frame;
  decltype(&AVIStreamGetFrameClose) closeFrames;
  decltype(&AVIStreamRelease) release;
  decltype(&AVIFileExit) exit;

 private:
  HMODULE library_ = LoadLibraryExW(L"avifil32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  bool isWhole_ = true;
};

/// Milliseconds that each picture stands.
UINT IntervalOf(const ClipLibrary& clips, PAVISTREAM stream) {
  AVISTREAMINFOW info = {};
  clips.info(stream, &info, sizeof info);
  return static_cast<UINT>(
      MulDiv(1000, static_cast<int>(info.dwScale), std::max(1, static_cast<int>(info.dwRate))));
}

std::vector<std::vector<unsigned char>> PicturesOf(const ClipLibrary& clips, PAVISTREAM stream) {
  std::vector<std::vector<unsigned char>> pictures;
  const PGETFRAME decoder = clips.openFrames(stream, nullptr);
  for (LONG i = 0; decoder && i < std::min(clips.length(stream), kMostFrames); ++i) {
    const auto* dib = static_cast<const BITMAPINFOHEADER*>(clips.frame(decoder, i));
    if (!dib || dib->biWidth <= 0 || dib->biHeight <= 0) break;
    const auto* bytes = reinterpret_cast<const unsigned char*>(dib);
    pictures.emplace_back(bytes, bytes + HeaderSize(*dib) + PixelsSize(*dib));
  }
  if (decoder) clips.closeFrames(decoder);
  return pictures;
}

/// Lets what has the colour of the first pixel take that of the window.
void MakeTransparent(BITMAPINFO& picture, const unsigned char* pixels) {
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  if (picture.bmiHeader.biBitCount == 8 && *pixels < ColorsOf(picture.bmiHeader))
    picture.bmiColors[*pixels] = {GetBValue(face), GetGValue(face), GetRValue(face), 0};
}

}  // namespace

bool Animation::Open(const std::string& path) {
  frames_.clear();
  static const ClipLibrary clips;
  if (!clips.IsWhole()) return false;
  clips.init();
  PAVISTREAM stream = nullptr;
  if (clips.open(&stream, Wide(path).c_str(), streamtypeVIDEO, 0, OF_READ, nullptr) == AVIERR_OK) {
    interval_ = IntervalOf(clips, stream);
    frames_ = PicturesOf(clips, stream);
    clips.release(stream);
  }
  clips.exit();
  return !frames_.empty();
}

void Animation::Play() {
  if (window() && !frames_.empty()) SetTimer(window(), 1, interval_, nullptr);
}

void Animation::Stop() {
  if (window()) KillTimer(window(), 1);
}

std::optional<LRESULT> Animation::OnMessage(UINT message, WPARAM, LPARAM) {
  if (message == WM_TIMER) {
    frame_ = (frame_ + 1) % frames_.size();
    InvalidateRect(window(), nullptr, FALSE);
    return 0;
  }
  if (message != WM_PAINT) return {};
  PAINTSTRUCT paint = {};
  Paint(BeginPaint(window(), &paint));
  EndPaint(window(), &paint);
  return 0;
}

// The clip is drawn for the control's place at 96 dots per inch, and grows with it.
void Animation::Paint(HDC screen) {
  RECT client = {};
  GetClientRect(window(), &client);
  if (frame_ < frames_.size()) {
    auto& picture = *reinterpret_cast<BITMAPINFO*>(frames_[frame_].data());
    const unsigned char* pixels = frames_[frame_].data() + HeaderSize(picture.bmiHeader);
    MakeTransparent(picture, pixels);
    const int usual = MulDiv(row().height, USER_DEFAULT_SCREEN_DPI, kTwipsPerInch);
    const int width = MulDiv(picture.bmiHeader.biWidth, client.bottom, usual);
    const int height = MulDiv(picture.bmiHeader.biHeight, client.bottom, usual);
    const int left = (client.right - width) / 2;
    const int top = (client.bottom - height) / 2;
    SetStretchBltMode(screen, HALFTONE);
    StretchDIBits(screen, left, top, width, height, 0, 0, picture.bmiHeader.biWidth,
                  picture.bmiHeader.biHeight, pixels, &picture, DIB_RGB_COLORS, SRCCOPY);
    ExcludeClipRect(screen, left, top, left + width, top + height);
  }
  FillRect(screen, &client, GetSysColorBrush(COLOR_BTNFACE));
}

}  // namespace forms
