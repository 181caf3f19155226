#include "tools/jpeg2000.h"

#include <openjpeg.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace tools {
namespace {

using Codec = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;
using LibraryImage = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;

constexpr OPJ_UINT32 kMostSide = 8192;  ///< A damaged header must not ask for gigabytes.
constexpr OPJ_SIZE_T kEnd = static_cast<OPJ_SIZE_T>(-1);

/// The bytes that a stream of the library's writes into or reads from.
struct Memory {
  Bytes* written = nullptr;
  const std::uint8_t* read = nullptr;
  std::size_t size = 0;
  std::size_t at = 0;
};

OPJ_SIZE_T WriteMemory(void* buffer, OPJ_SIZE_T count, void* user) {
  auto& memory = *static_cast<Memory*>(user);
  if (memory.at + count > memory.written->size()) memory.written->resize(memory.at + count);
  std::copy_n(static_cast<const std::uint8_t*>(buffer), count,
              memory.written->begin() + static_cast<std::ptrdiff_t>(memory.at));
  memory.at += count;
  return count;
}

OPJ_SIZE_T ReadMemory(void* buffer, OPJ_SIZE_T count, void* user) {
  auto& memory = *static_cast<Memory*>(user);
  const std::size_t ready = std::min<std::size_t>(count, memory.size - memory.at);
  if (ready == 0) return kEnd;
  std::copy_n(memory.read + memory.at, ready, static_cast<std::uint8_t*>(buffer));
  memory.at += ready;
  return ready;
}

OPJ_BOOL SeekMemory(OPJ_OFF_T offset, void* user) {
  auto& memory = *static_cast<Memory*>(user);
  if (offset < 0) return OPJ_FALSE;
  memory.at = static_cast<std::size_t>(offset);
  if (memory.read != nullptr) memory.at = std::min(memory.at, memory.size);
  return OPJ_TRUE;
}

OPJ_OFF_T SkipMemory(OPJ_OFF_T count, void* user) {
  auto& memory = *static_cast<Memory*>(user);
  return SeekMemory(static_cast<OPJ_OFF_T>(memory.at) + count, user) ? count : -1;
}

Stream MakeStream(Memory& memory) {
  Stream stream(opj_stream_create(4096, memory.read != nullptr), &opj_stream_destroy);
  opj_stream_set_user_data(stream.get(), &memory, nullptr);
  opj_stream_set_user_data_length(stream.get(), memory.size);
  opj_stream_set_write_function(stream.get(), WriteMemory);
  opj_stream_set_read_function(stream.get(), ReadMemory);
  opj_stream_set_seek_function(stream.get(), SeekMemory);
  opj_stream_set_skip_function(stream.get(), SkipMemory);
  return stream;
}

LibraryImage ToLibrary(const Picture& picture) {
  opj_image_cmptparm_t part = {};
  part.dx = part.dy = 1;
  part.w = static_cast<OPJ_UINT32>(picture.width);
  part.h = static_cast<OPJ_UINT32>(picture.height);
  part.prec = 8;
  LibraryImage image(opj_image_create(1, &part, OPJ_CLRSPC_GRAY), &opj_image_destroy);
  if (!image) throw std::runtime_error("no memory for a picture");
  image->x1 = part.w;
  image->y1 = part.h;
  std::copy(picture.pixels.begin(), picture.pixels.end(), image->comps[0].data);
  return image;
}

/// Splitting ends before a side falls below one dot.
int LevelsFor(const Picture& picture) {
  int levels = 1;
  while (levels < 5 && std::min(picture.width, picture.height) >> (levels + 3) > 0) ++levels;
  return levels;
}

bool IsReasonable(const opj_image_t& image) {
  return image.numcomps >= 1 && image.x1 > image.x0 && image.y1 > image.y0 &&
         image.x1 - image.x0 <= kMostSide && image.y1 - image.y0 <= kMostSide;
}

Picture FromLibrary(const opj_image_comp_t& part) {
  Picture picture = {static_cast<int>(part.w), static_cast<int>(part.h), Bytes()};
  const std::size_t count = static_cast<std::size_t>(part.w) * part.h;
  picture.pixels.resize(count);
  std::transform(part.data, part.data + count, picture.pixels.begin(), [](OPJ_INT32 value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
  });
  return picture;
}

}  // namespace

Bytes EncodeJpeg2000(const Picture& picture) {
  opj_cparameters_t settings;
  opj_set_default_encoder_parameters(&settings);
  settings.tcp_numlayers = 1;
  settings.cp_disto_alloc = 1;
  settings.numresolution = LevelsFor(picture);
  const Codec codec(opj_create_compress(OPJ_CODEC_J2K), &opj_destroy_codec);
  const LibraryImage image = ToLibrary(picture);
  Bytes bytes;
  Memory memory;
  memory.written = &bytes;
  const Stream stream = MakeStream(memory);
  if (!opj_setup_encoder(codec.get(), &settings, image.get()) ||
      !opj_start_compress(codec.get(), image.get(), stream.get()) ||
      !opj_encode(codec.get(), stream.get()) || !opj_end_compress(codec.get(), stream.get()))
    throw std::runtime_error("a picture could not be encoded");
  return bytes;
}

std::optional<Picture> DecodeJpeg2000(const std::uint8_t* bytes, std::size_t count) {
  opj_dparameters_t settings;
  opj_set_default_decoder_parameters(&settings);
  const Codec codec(opj_create_decompress(OPJ_CODEC_J2K), &opj_destroy_codec);
  Memory memory;
  memory.read = bytes;
  memory.size = count;
  const Stream stream = MakeStream(memory);
  opj_image_t* header = nullptr;
  if (!opj_setup_decoder(codec.get(), &settings) ||
      !opj_read_header(stream.get(), codec.get(), &header))
    return std::nullopt;
  const LibraryImage image(header, &opj_image_destroy);
  if (!IsReasonable(*image) || !opj_decode(codec.get(), stream.get(), image.get()) ||
      image->comps[0].data == nullptr)
    return std::nullopt;
  return FromLibrary(image->comps[0]);
}

}  // namespace tools
