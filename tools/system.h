#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

/// What the tools ask of the system they run on.
namespace tools {

/// A SHA-256 sum, by the system's own means or those of a packaged library.
class Sha256 {
 public:
  Sha256();

  void Add(const std::uint8_t* bytes, std::size_t count);
  /// The sum of all that was added; to be asked once.
  std::array<std::uint8_t, 32> Finish();

 private:
  std::shared_ptr<void> state_;  ///< What the system or the library keeps.
};

/// Whether a person looks on: standard error is a terminal.
bool IsWatched();
/// Whether the console was opened for this program alone, and closes when it ends.
bool IsAloneOnConsole();
/// As long as this is held, the console takes what is written as UTF-8.
std::shared_ptr<void> Utf8OnConsole();

}  // namespace tools
