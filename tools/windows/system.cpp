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

struct Sha256::State {
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
};

Sha256::Sha256() : state_(std::make_unique<State>()) {
  Demand(BCryptOpenAlgorithmProvider(&state_->algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
  Demand(BCryptCreateHash(state_->algorithm, &state_->hash, nullptr, 0, nullptr, 0, 0));
}

Sha256::~Sha256() {
  BCryptDestroyHash(state_->hash);
  BCryptCloseAlgorithmProvider(state_->algorithm, 0);
}

void Sha256::Add(const std::uint8_t* bytes, std::size_t count) {
  Demand(BCryptHashData(state_->hash, const_cast<PUCHAR>(bytes), static_cast<ULONG>(count), 0));
}

std::array<std::uint8_t, 32> Sha256::Finish() {
  std::array<std::uint8_t, 32> sum;
  Demand(BCryptFinishHash(state_->hash, sum.data(), static_cast<ULONG>(sum.size()), 0));
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
