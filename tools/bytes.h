#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
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

/// The signed value of 4 bytes, as text lengths are.
inline std::int32_t GetSigned(const std::uint8_t* at) {
  return static_cast<std::int32_t>(Get(at, 4));
}

/// The address `index` entries of `width` bytes on.
template <typename Byte>
Byte* EntryAt(Byte* at, int index, int width) {
  return at + static_cast<std::ptrdiff_t>(index) * width;
}

/// The FNV-1a hash of some bytes.
inline std::uint64_t Hash(const std::uint8_t* at, std::size_t count) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (std::size_t i = 0; i < count; ++i) hash = (hash ^ at[i]) * 0x100000001B3u;
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

  /// A number from `least` to `most`, both inclusive.
  int Between(int least, int most) {
    const auto span = static_cast<std::uint64_t>(most) - static_cast<std::uint64_t>(least) + 1;
    return static_cast<int>(static_cast<std::uint64_t>(least) + Next() % span);
  }

 private:
  std::uint64_t state_;
};

}  // namespace tools
