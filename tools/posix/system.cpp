// The calls that do one hash and nothing else: those of today read a configuration and load
// modules, which a static program cannot.
#define OPENSSL_API_COMPAT 10100

#include "tools/system.h"

#include <openssl/sha.h>
#include <unistd.h>

namespace tools {

Sha256::Sha256() : state_(std::make_shared<SHA256_CTX>()) {
  SHA256_Init(static_cast<SHA256_CTX*>(state_.get()));
}

void Sha256::Add(const std::uint8_t* bytes, std::size_t count) {
  SHA256_Update(static_cast<SHA256_CTX*>(state_.get()), bytes, count);
}

std::array<std::uint8_t, 32> Sha256::Finish() {
  std::array<std::uint8_t, 32> sum;
  SHA256_Final(sum.data(), static_cast<SHA256_CTX*>(state_.get()));
  return sum;
}

bool IsWatched() {
  return isatty(STDERR_FILENO) == 1;
}

bool IsAloneOnConsole() {
  return false;
}

std::shared_ptr<void> Utf8OnConsole() {
  return nullptr;
}

}  // namespace tools
