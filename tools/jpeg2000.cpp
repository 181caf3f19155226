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

/// The bytes that a stream of the library's writes.
struct Memory {
  std::string bytes;
  std::size_t at = 0;
};

OPJ_SIZE_T WriteMemory(void* buffer, OPJ_SIZE_T count, void* user) {
  auto& memory = *static_cast<Memory*>(user);
  memory.bytes.resize(std::max(memory.bytes.size(), memory.at + count));
  std::copy_n(static_cast<const char*>(buffer), count,
              memory.bytes.begin() + static_cast<std::ptrdiff_t>(memory.at));
  memory.at += count;
  return count;
}

OPJ_BOOL SeekMemory(OPJ_OFF_T offset, void* user) {
  static_cast<Memory*>(user)->at = static_cast<std::size_t>(offset);
  return OPJ_TRUE;
}

OPJ_OFF_T SkipMemory(OPJ_OFF_T count, void* user) {
  static_cast<Memory*>(user)->at += static_cast<std::size_t>(count);
  return count;
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

}  // namespace

std::string EncodeJpeg2000(const Picture& picture) {
  opj_cparameters_t settings;
  opj_set_default_encoder_parameters(&settings);
  settings.tcp_numlayers = 1;
  settings.cp_disto_alloc = 1;
  settings.numresolution = 4;  // The smallest picture is too small for more.
  const Codec codec(opj_create_compress(OPJ_CODEC_J2K), &opj_destroy_codec);
  const LibraryImage image = ToLibrary(picture);
  Memory memory;
  const Stream stream(opj_stream_create(4096, OPJ_FALSE), &opj_stream_destroy);
  opj_stream_set_user_data(stream.get(), &memory, nullptr);
  opj_stream_set_write_function(stream.get(), WriteMemory);
  opj_stream_set_seek_function(stream.get(), SeekMemory);
  opj_stream_set_skip_function(stream.get(), SkipMemory);
  if (!opj_setup_encoder(codec.get(), &settings, image.get()) ||
      !opj_start_compress(codec.get(), image.get(), stream.get()) ||
      !opj_encode(codec.get(), stream.get()) || !opj_end_compress(codec.get(), stream.get()))
    throw std::runtime_error("a picture could not be encoded");
  return memory.bytes;
}

}  // namespace tools
