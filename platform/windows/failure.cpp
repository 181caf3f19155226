#include "platform/windows/failure.h"

#include <iterator>

#include "platform/windows/text.h"

namespace platform {
namespace {

using Kind = Failure::Kind;

// Not in every compiler's headers.
constexpr DWORD kDiskQuotaExceeded = 1295;
constexpr DWORD kNoSuchDevice = 433;

Kind KindOf(DWORD error) {
  switch (error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kDiskQuotaExceeded:
      return Kind::kDiskFull;
    case ERROR_WRITE_PROTECT:
      return Kind::kDiskProtected;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return Kind::kInUse;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
      return Kind::kMissing;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return Kind::kTaken;
    case ERROR_NOT_READY:
    case ERROR_GEN_FAILURE:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_NETNAME_DELETED:
    case ERROR_SEM_TIMEOUT:
    case kNoSuchDevice:
    case ERROR_IO_DEVICE:
    case ERROR_DEVICE_NOT_CONNECTED:
      return Kind::kNoAnswer;
    default:
      return Kind::kOther;
  }
}

std::string SystemText(DWORD error) {
  wchar_t text[512] = {};
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                error, 0, text, std::size(text), nullptr);
  while (length > 0 && text[length - 1] <= L' ') --length;
  return Utf8({text, length});
}

}  // namespace

Failure FailureOf(DWORD error) {
  const Kind kind = KindOf(error);
  return {kind, kind == Kind::kOther ? SystemText(error) : ""};
}

bool MeansUnknown(DWORD error) {
  return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ||
         error == ERROR_INVALID_PARAMETER || error == ERROR_CALL_NOT_IMPLEMENTED;
}

}  // namespace platform
