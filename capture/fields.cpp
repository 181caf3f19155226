#include "capture/fields.h"

#include <algorithm>
#include <limits>

#include "capture/format.h"
#include "platform/runtime_error.h"

namespace mdlFileProcessing {

namespace {

constexpr char kSource[] = "mdlFileProcessing";

Bytes Part(Bytes bytes, std::int64_t offset, std::int64_t length) {
  if (offset < 0 || length < 0 || offset + length > std::ssize(bytes))
    throw RuntimeError::SubscriptOutOfRange(kSource);
  return bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
}

void CheckLength(int length) {
  if (length < 1 || length > 4) throw RuntimeError::InvalidProcedureCall(kSource);
}

}  // namespace

std::int32_t ReadBigEndian(Bytes bytes, std::int64_t offset, int length) {
  CheckLength(length);
  std::uint32_t value = 0;
  for (const std::uint8_t byte : Part(bytes, offset, length)) value = value << 8 | byte;
  return static_cast<std::int32_t>(value);
}

void PutBigEndian(std::uint8_t* bytes, int length, std::int64_t value) {
  CheckLength(length);
  const std::int64_t least = length == 4 ? std::numeric_limits<std::int32_t>::min() : 0;
  const std::int64_t limit = std::int64_t{1} << 8 * length;
  if (value < least || value >= limit) throw RuntimeError::Overflow(kSource);
  for (int k = 0; k < length; ++k)
    bytes[k] = static_cast<std::uint8_t>(value >> 8 * (length - 1 - k) & 0xFF);
}

std::int32_t ReadSectorNumber(Bytes bytes, std::int64_t offset, int width) {
  const Bytes field = Part(bytes, offset, width);
  return (field.front() & 15) * 256 + field.back();
}

std::string ReadTitleField(Bytes bytes, std::int64_t offset) {
  const Bytes title = Part(bytes, offset, format::tail::kTitleRead);
  return {title.begin(), std::find(title.begin(), title.end(), 0)};
}

std::string ReadTextField(Bytes bytes, std::int64_t offset, std::int32_t& length) {
  length = std::min(length, format::text::kRoom);
  const Bytes text = Part(bytes, offset, std::max(length, 0));
  return {text.begin(), text.end()};
}

}  // namespace mdlFileProcessing
