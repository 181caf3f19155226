#include "driver/recording.h"

#include "driver/files.h"
#include "forms/text.h"

namespace driver {
namespace {

constexpr std::uint64_t kTrailer = 0x1FFC00;
constexpr std::uint64_t kStart = 4, kEnd = 8;
constexpr std::int64_t kTicks = 10'000'000;  // A FILETIME counts steps of 100 ns.

std::int64_t Ticks(const SYSTEMTIME& time) {
  FILETIME file = {};
  SystemTimeToFileTime(&time, &file);
  return static_cast<std::int64_t>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
}

SYSTEMTIME FromTicks(std::int64_t ticks) {
  const FILETIME file = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME time = {};
  FileTimeToSystemTime(&file, &time);
  return time;
}

SYSTEMTIME TimeInTrailer(const std::string& path, int block, std::uint64_t offset) {
  const std::string bytes = Read(path, (block - 1) * kBlock + kTrailer + offset, 4);
  std::int64_t seconds = 0;
  for (const char byte : bytes) seconds = seconds << 8 | static_cast<unsigned char>(byte);
  SYSTEMTIME epoch = {};
  epoch.wYear = 1960;
  epoch.wMonth = epoch.wDay = 1;
  return Later(epoch, seconds);
}

}  // namespace

SYSTEMTIME StartOf(const std::string& path, int block) {
  return TimeInTrailer(path, block, kStart);
}

SYSTEMTIME EndOf(const std::string& path, int block) {
  return TimeInTrailer(path, block, kEnd);
}

SYSTEMTIME Later(const SYSTEMTIME& time, std::int64_t seconds) {
  return FromTicks(Ticks(time) + seconds * kTicks);
}

std::string TextOf(const SYSTEMTIME& time) {
  wchar_t date[100] = L"", clock[100] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date, 100);
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, clock, 100);
  return forms::Utf8(date) + " " + forms::Utf8(clock);
}

std::string RangeText(const std::string& path, int first, int last) {
  return TextOf(StartOf(path, first)) + "----" + TextOf(EndOf(path, last));
}

}  // namespace driver
