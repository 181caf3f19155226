#pragma once

#include <cstdint>
#include <span>
#include <string>

/// The fields of a recording, in plain bytes. Offsets count from 0; one outside raises a
/// `RuntimeError`.
namespace mdlFileProcessing {

using Bytes = std::span<const std::uint8_t>;

/// Value of `length` (1 to 4) bytes from `offset` on, most significant byte first, as a signed
/// 32-bit integer: a value of 2^31 or more wraps.
std::int32_t ReadBigEndian(Bytes bytes, std::int64_t offset, int length);

/// Stores `value` in `length` (1 to 4) bytes from `bytes` on, most significant byte first. A value
/// that does not fit raises an overflow; a field of 4 bytes takes any 32-bit value, signed or not.
void PutBigEndian(std::uint8_t* bytes, int length, std::int64_t value);

/// (byte at `offset` AND 15) x 256 + byte at `offset` + `width` - 1; with width 2 the 12-bit sector
/// number of an image entry.
std::int32_t ReadSectorNumber(Bytes bytes, std::int64_t offset, int width);

/// Up to 16 bytes from `offset` on, up to the first zero byte; one byte a character.
std::string ReadTitleField(Bytes bytes, std::int64_t offset);

/// `length` bytes from `offset` on, at most 500: a greater length is lowered in the caller's
/// variable as well. A length of 0 or below gives no text.
std::string ReadTextField(Bytes bytes, std::int64_t offset, std::int32_t& length);

}  // namespace mdlFileProcessing
