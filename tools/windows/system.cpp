#include "tools/system.h"

// Needed by the next one.
#include <windows.h>

#include <bcrypt.h>

#include <stdexcept>

namespace tools {
namespace {

void Demand(NTSTATUS status) {
  if (status < 0) throw std::runtime_error("the system gives no SHA-256");
}

}  // namespace

Sha256::Sha256() {
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
  Demand(BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
  Demand(BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0));
  state_ = std::shared_ptr<void>(hash, [algorithm](void* made) {
    BCryptDestroyHash(made);
    BCryptCloseAlgorithmProvider(algorithm, 0);
  });
}

void Sha256::Add(const std::uint8_t* bytes, std::size_t count) {
  Demand(BCryptHashData(state_.get(), const_cast<PUCHAR>(bytes), static_cast<ULONG>(count), 0));
}

std::array<std::uint8_t, 32> Sha256::Finish() {
  std::array<std::uint8_t, 32> sum;
  Demand(BCryptFinishHash(state_.get(), sum.data(), static_cast<ULONG>(sum.size()), 0));
  return sum;
}

bool IsWatched() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

bool IsAloneOnConsole() {
  DWORD process = 0;
  return GetConsoleProcessList(&process, 1) == 1;
}

std::shared_ptr<void> Utf8OnConsole() {
  const UINT before = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  return {nullptr, [before](void*) { SetConsoleOutputCP(before); }};
}

}  // namespace tools
