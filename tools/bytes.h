#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

using Bytes = std::vector<std::uint8_t>;

/// Stores the lower 8 x `width` bits of `value`, most significant byte first.
inline void Put(std::uint8_t* at, int width, std::uint32_t value) {
  for (int i = width - 1; i >= 0; --i, value >>= 8) at[i] = static_cast<std::uint8_t>(value);
}

/// The unsigned value of `width` (1 to 4) bytes, most significant byte first.
inline std::uint32_t Get(const std::uint8_t* at, int width) {
  std::uint32_t value = 0;
  for (int i = 0; i < width; ++i) value = value << 8 | at[i];
  return value;
}

/// An inclusive range of whole numbers.
struct Range {
  int first;
  int last;
};

/// The FNV-1a hash of some bytes.
inline std::uint64_t Hash(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (const char byte : bytes) hash = (hash ^ static_cast<std::uint8_t>(byte)) * 0x100000001B3u;
  return hash;
}

/// Where the random numbers of a recording start.
inline constexpr std::uint64_t kSeed = 1;

/// A small generator whose numbers depend on nothing but the seed (splitmix64).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  /// Some bytes.
  std::string Text(std::size_t count) {
    std::string text(count, '\0');
    for (char& byte : text) byte = static_cast<char>(Next());
    return text;
  }

  /// A number of a range that begins at 0 or above.
  int Between(Range range) {
    const int count = range.last - range.first + 1;
    return range.first + static_cast<int>(Next() % static_cast<std::uint64_t>(count));
  }

 private:
  std::uint64_t state_;
};

}  // namespace tools
