// Writes recordings as a recorder of security cameras would, for tests and demonstrations. The same
// command line always gives the same bytes.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <climits>
#include <cmath>
#include <ctime>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "tools/block_builder.h"
#include "tools/console.h"
#include "tools/damage.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostImageBytes = 2000000;

/// What a command line wants a recording to hold.
struct Wishes {
  std::string file;
  bool check = false;                  ///< To be checked instead of made.
  std::string types;                   ///< As the command line has them.
  std::vector<const Layout*> layouts;  ///< Of the blocks, in turn.
  BlockStyle style = {.noise = true};
  int blocks = 3;
  std::set<int> cameras = {1, 2, 3, 4};  ///< From 1 on. They record in turn.
  std::vector<std::string> titles;       ///< Of camera i + 1 at i; "CAM n" beyond the end.
  std::int64_t start = 1930478400;       ///< Time stamp of the first image: 2021-03-04 12:00:00.
  double step = 1;                       ///< Seconds from image to image.
  bool tails = true;                   ///< Write tails in the block types where they are a choice.
  int mostImages = INT_MAX;            ///< Images a block at the most.
  Range size = {4000, 40000};          ///< Bytes of an image.
  bool fill = false;                   ///< Let the last image of a block reach to the trailer.
  int textEvery = 0;                   ///< Each so-manieth image has a text; 0: none.
  Range textLength = {1, kTextBytes};  ///< Bytes of a text.
  int soundEvery = 0;                  ///< Each so-manieth image has sound; 0: none.
  Range soundSectors = {1, 31};        ///< Sectors of sound.
  int flagsEvery = 0;  ///< Each so-manieth image has flags, 1 to 3 in turn; 0: none.
  int holes = 0;       ///< Blocks outside `dense` hold so many images that are holes; 0: none do.
  std::vector<Range> dense;
  std::vector<Damage> damages;

  /// The title of a camera, from 0 on.
  std::string TitleOf(int camera) const {
    const auto index = static_cast<std::size_t>(camera);
    return index < titles.size() ? titles[index] : "CAM " + std::to_string(camera + 1);
  }
};

/// A page of the disk: what a block in a sparse file costs.
constexpr std::int64_t kPage = 4096;
/// Letters of texts: mostly capitals and digits, now and then one beyond ASCII.
constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789 .,:*$\xA3\xE4\xFC";
constexpr int kLetterCount = static_cast<int>(sizeof kLetters) - 1;

/// An image begins with a header by which it is known again: magic, then five 4-byte fields: camera
/// from 1 on, time stamp, number within the recording, length of the whole image, checksum of what
/// follows the header. The rest is pseudo-random.
constexpr std::string_view kMagic = "TESTIMG1";
constexpr int kHeaderCamera = 8;
constexpr int kHeaderTime = 12;
constexpr int kHeaderNumber = 16;
constexpr int kHeaderLength = 20;
constexpr int kHeaderChecksum = 24;
constexpr std::size_t kHeaderBytes = 28;

std::uint32_t ChecksumOf(std::string_view image) {
  return static_cast<std::uint32_t>(Hash(image.substr(kHeaderBytes)));
}

/// Such an image, never ending in a zero; without the header when it is too short for one.
std::string MakeBytes(const Image& image, std::uint32_t number, int length) {
  std::string bytes = Random(kSeed + number).Text(static_cast<std::size_t>(length));
  if (!bytes.empty()) bytes.back() |= 1;
  if (bytes.size() <= kHeaderBytes) return bytes;
  bytes.replace(0, kMagic.size(), kMagic);
  auto* header = reinterpret_cast<std::uint8_t*>(bytes.data());
  Put(header + kHeaderCamera, 4, static_cast<std::uint32_t>(image.camera + 1));
  Put(header + kHeaderTime, 4, image.Stamp());
  Put(header + kHeaderNumber, 4, number);
  Put(header + kHeaderLength, 4, static_cast<std::uint32_t>(length));
  Put(header + kHeaderChecksum, 4, ChecksumOf(bytes));
  return bytes;
}

bool IsTurn(int every, std::uint32_t number) {
  return every > 0 && number % static_cast<std::uint32_t>(every) == 0;
}

std::string MakeText(Random& random, int length) {
  std::string text;
  for (int i = 0; i < length; ++i) text += kLetters[random.Between({0, kLetterCount - 1})];
  return text;
}

/// Makes whole blocks one after the other, as a recorder would.
class Recorder {
 public:
  explicit Recorder(const Wishes& wishes) : wishes_(wishes), builder_(wishes.style) {}

  /// Answers the number of images.
  std::uint32_t Record() {
    std::ofstream file(wishes_.file, std::ios::binary | std::ios::trunc);
    for (int block = 1; block <= wishes_.blocks; ++block) {
      const Bytes& bytes = MakeBlock(block);
      const std::int64_t skipped = IsDense(block) ? 0 : kBlockBytes - kPage;
      file.seekp((block - 1) * kBlockBytes + skipped);
      file.write(reinterpret_cast<const char*>(bytes.data()) + skipped, kBlockBytes - skipped);
    }
    file.close();
    if (!file) throw std::runtime_error(wishes_.file + " could not be written");
    return imageCount_;
  }

 private:
  /// An image of the camera whose turn it is, of the present time, without contents.
  Image BareImage() const {
    Image image;
    const auto turn = static_cast<std::ptrdiff_t>(imageCount_ % wishes_.cameras.size());
    image.camera = *std::next(wishes_.cameras.begin(), turn) - 1;
    image.seconds = static_cast<std::int32_t>(wishes_.start +
                                              std::llround(std::floor(imageCount_ * wishes_.step)));
    image.title = wishes_.TitleOf(image.camera);
    image.tail = wishes_.tails;
    return image;
  }

  bool IsDense(int block) const {
    return wishes_.holes == 0 ||
           std::any_of(wishes_.dense.begin(), wishes_.dense.end(),
                       [&](Range r) { return r.first <= block && block <= r.last; });
  }

  Image NextImage() {
    Image image = BareImage();
    if (IsTurn(wishes_.flagsEvery, imageCount_))
      image.flags = 1 + static_cast<int>(imageCount_) / wishes_.flagsEvery % 3;
    // Each part has numbers of its own, so that one option changes one part.
    Random seeds(kSeed + imageCount_);
    Random sizes(seeds.Next()), texts(seeds.Next()), sounds(seeds.Next());
    const bool hasParts = layout_->entryParts != kNone;
    if (hasParts && IsTurn(wishes_.textEvery, imageCount_))
      image.text = MakeText(texts, texts.Between(wishes_.textLength));
    if (hasParts && IsTurn(wishes_.soundEvery, imageCount_))
      image.sound = sounds.Text(std::size_t{kSectorBytes} * sounds.Between(wishes_.soundSectors));
    int size = sizes.Between(wishes_.size);
    if (wishes_.style.tight)
      size = std::max(1, (size + kTailBytes) / kSectorBytes) * kSectorBytes - kTailBytes;
    image.bytes = MakeBytes(image, imageCount_, size);
    return image;
  }

  /// Adds one image that ends where the trailer begins.
  void FillUp() {
    const int size = builder_.FreeSectors() * kSectorBytes - kTailBytes - 1;
    if (size <= 0) return;
    Image image = BareImage();
    image.title = "FILL";
    image.bytes = MakeBytes(image, imageCount_, size);
    builder_.Add(image);
    ++imageCount_;
  }

  void AddImages() {
    const int most = std::min(wishes_.mostImages, layout_->mostImages) - (wishes_.fill ? 1 : 0);
    while (builder_.ImageCount() < most) {
      const Image image = NextImage();
      if (!builder_.Fits(image)) break;
      builder_.Add(image);
      ++imageCount_;
    }
    if (wishes_.fill) FillUp();
  }

  /// Images over the whole data area, all zeros but for the last one's tail, so that on disk the
  /// block takes the one page that holds that tail and the trailer.
  void AddHoles() {
    for (int left = std::min(wishes_.holes, layout_->mostImages); left > 0; --left, ++imageCount_) {
      Image image = BareImage();
      image.title = "HOLE";
      builder_.AddHole(image, builder_.FreeSectors() / left);
    }
  }

  const Bytes& MakeBlock(int block) {
    const auto index = static_cast<std::size_t>(block - 1) % wishes_.layouts.size();
    layout_ = wishes_.layouts[index];
    builder_.Begin(*layout_, static_cast<std::uint32_t>(block));
    IsDense(block) ? AddImages() : AddHoles();
    if (wishes_.damages.empty()) return builder_.Finish();
    damaged_ = builder_.Finish();
    for (const Damage& damage : wishes_.damages) {
      Victim victim = {*layout_, damaged_.data(), random_};
      if (damage.block == 0 || damage.block == block) damage.kind->apply(victim);
    }
    return damaged_;
  }

  const Wishes& wishes_;
  Random random_{kSeed};  ///< For damage.
  BlockBuilder builder_;
  const Layout* layout_ = nullptr;  ///< Of the block that is being made.
  Bytes damaged_;
  std::uint32_t imageCount_ = 0;
};

std::vector<std::string> Split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, at);) parts.push_back(part);
  return parts;
}

void SetTitles(Wishes& wishes, const std::string& text) {
  wishes.titles = Split(text, '|');
  for (const std::string& title : wishes.titles)
    if (title.size() > kTailTitleBytes) throw std::invalid_argument("a title is too long");
}

/// The time stamp of a day, with or without a time: "2021-03-04", "2021-03-04T12:00:00".
std::int64_t ParseTime(const std::string& text) {
  constexpr std::time_t kEpoch = -315619200;  // 1960-01-01 00:00:00.
  std::string whole = text.size() == 10 ? text + " 00:00:00" : text;
  std::replace(whole.begin(), whole.end(), 'T', ' ');
  std::tm time = {};
  strptime(whole.c_str(), "%Y-%m-%d %H:%M:%S", &time);
  const std::int64_t stamp = timegm(&time) - kEpoch;
  // A day that there is not makes another.
  if (stamp < 0 || stamp > UINT32_MAX || TimeText(stamp) != whole)
    throw std::invalid_argument("not a time that a recording can have: " + text);
  return stamp;
}

std::string Footer() {
  std::string text =
      "Examples:\n"
      "  make_recording --blocks 1 --cameras 1,3 --titles 'Gate||Yard' example.60D\n"
      "  make_recording --type 00,30 --damage type-unknown@2 mixed.60D\n\n"
      "Kinds of damage:\n";
  for (const DamageKind& kind : DamageKinds())
    text += "  " + kind.name + std::string(26 - kind.name.size(), ' ') + kind.help + "\n";
  return text;
}

/// Adds the options of a command line, which fill the wishes.
void AddOptions(CLI::App& app, Wishes& wishes) {
  const auto add = [&](const char* name, auto& value, const char* wanted, const char* help) {
    return app.add_option(name, value, help)->option_text(wanted);
  };
  const auto addCount = [&](const char* name, int& value, int most, const char* help) {
    add(name, value, "N", help)->check(CLI::Range(0, most));
  };
  const auto addRange = [&](const char* name, Range& range, int most, const char* help) {
    AddText(app, name, "A-B", help,
            [&range, most](const auto& text) { range = ParseRange(text, 1, most); });
  };

  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  add("FILE", wishes.file, " ", "a name that ends in 20D makes a .20D file")->required();
  app.add_flag(
      "--check", wishes.check,
      "checks that each image of FILE, which make_recording has made, is whole, and of the "
      "camera and the time of its entry");
  add("--type", wishes.types, "TYPES",
      "block types, as 30 or 00,20: one after the other, in turn; 00, 10, 20, 30 (.60D) or 60 "
      "(.20D); by default 30 or 60, as the name ends");
  addCount("--blocks", wishes.blocks, kMostBlocks, "blocks of 2 MiB (3)");
  addRange("--size", wishes.size, kMostImageBytes, "bytes of an image (4000-40000)");
  addCount("--images", wishes.mostImages, 758,
           "images a block at the most; as many as fit by default");
  app.add_flag("--fill", wishes.fill, "the last image of each block reaches up to the trailer");
  app.add_flag("--tight", wishes.style.tight, "images use the last byte before their tail too");
  app.add_flag("!--no-tails", wishes.tails, "images without tails (types 00, 10, 20)");
  addCount("--flags-every", wishes.flagsEvery, kMostBlocks,
           "each N-th image has flags, 1 to 3 in turn");
  AddText(app, "--cameras", "LIST", "cameras that record, as 1,3,5-8 (1-4); up to 32 in type 20",
          [&](const auto& text) { wishes.cameras = ParseNumbers(text, 1, 32); });
  AddText(app, "--titles", "A|B|...", "titles of cameras 1, 2, ..., which may be empty (CAM n)",
          [&](const auto& text) { SetTitles(wishes, text); });
  AddText(app, "--start", "TIME", "time of the first image (2021-03-04 12:00:00), up to 2096",
          [&](const auto& text) { wishes.start = ParseTime(text); });
  add("--step", wishes.step, "SECONDS", "from image to image (1); fractions are welcome");
  app.add_flag("--pal", wishes.style.pal, "video standard PAL instead of NTSC");
  addCount("--text-every", wishes.textEvery, kMostBlocks,
           "each N-th image has a transaction text (not in types 00, 10)");
  addRange("--text-length", wishes.textLength, kTextBytes, "length of these texts (1-500)");
  addCount("--sound-every", wishes.soundEvery, kMostBlocks,
           "each N-th image has sound (not in types 00, 10)");
  addRange("--sound-sectors", wishes.soundSectors, 31, "sectors of that sound (1-31)");
  app.add_flag("--sparse{1}", wishes.holes,
               "blocks that take one page of the disk: an image of zeros in each, or as many as "
               "--sparse=N names");
  AddText(app, "--dense", "A-B",
          "blocks of a sparse file that are full all the same; may be repeated",
          [&](const auto& text) { wishes.dense.push_back(ParseRange(text, 1, kMostBlocks)); });
  AddText(app, "--damage", "KIND[@BLOCK]", "damages all blocks or one; may be repeated; see below",
          [&](const auto& text) { wishes.damages.push_back(ParseDamage(text)); });
  app.footer(Footer());
}

const Layout& NamedLayout(const std::string& name, bool is20D) {
  for (const Layout& layout : kLayouts)
    if (name == layout.name && layout.is20D == is20D) return layout;
  throw std::invalid_argument("a file of this name has no block type " + name);
}

/// Adds to the wishes what depends on the file's name and on several options.
void Complete(Wishes& wishes) {
  const bool is20D = IsNameOf20D(wishes.file);
  if (wishes.types.empty()) wishes.types = is20D ? "60" : "30";
  for (const std::string& name : Split(wishes.types, ',')) {
    const Layout& layout = NamedLayout(name, is20D);
    if (*wishes.cameras.rbegin() > layout.cameras)
      throw std::invalid_argument("--cameras: blocks of this type know no more than 16");
    wishes.layouts.push_back(&layout);
  }
  for (std::size_t i = 0; i < wishes.style.titles.size(); ++i)
    wishes.style.titles[i] = wishes.TitleOf(static_cast<int>(i));
}

/// What is wrong with an image of such a recording: it shows another camera or time than its
/// entry's, or bytes have changed. Empty when all is well.
std::string CheckImage(const StoredBlock& block, const StoredImage& image) {
  if (!image.trouble.empty()) return image.trouble;
  if (image.bytes.size() < kHeaderBytes || !image.bytes.starts_with(kMagic))
    return "is none of make_recording's";
  const auto* header = reinterpret_cast<const std::uint8_t*>(image.bytes.data());
  const std::uint32_t length = Get(header + kHeaderLength, 4);
  if (length > image.bytes.size() || length < kHeaderBytes)
    return "is shorter than its header says";
  if (ChecksumOf(image.bytes.substr(0, length)) != Get(header + kHeaderChecksum, 4))
    return "has a wrong checksum";
  const int camera = static_cast<int>(Get(header + kHeaderCamera, 4));
  if (camera != image.camera + 1) return "shows camera " + std::to_string(camera);
  // An image's time is its own, or only spread over its block.
  const bool hasOwnTime = image.tail || block.layout->entryTime != kNone;
  const std::uint32_t stamp = Get(header + kHeaderTime, 4);
  return !hasOwnTime || stamp == image.Stamp() ? "" : "shows " + TimeText(stamp);
}

int Make(Wishes& wishes) {
  Complete(wishes);
  const std::uint32_t images = Recorder(wishes).Record();
  std::cout << wishes.file << ": " << wishes.blocks << " blocks, " << images << " images\n";
  return 0;
}

int Check(const std::string& path) {
  RecordingReader reader(path);
  int count = 0;
  int failures = 0;
  for (int number = 1; number <= reader.BlockCount(); ++number) {
    const StoredBlock& block = reader.Read(number);
    for (const StoredImage& image : block.images) {
      ++count;
      const std::string failure = CheckImage(block, image);
      if (failure.empty()) continue;
      ++failures;
      std::cout << number << '.' << image.index << " camera " << image.camera + 1 << ' ' << failure
                << '\n';
    }
  }
  std::cout << "checked " << count << " images, " << failures << " wrong\n";
  return failures == 0 && count > 0 ? 0 : 1;
}

}  // namespace
}  // namespace tools

int main(int argc, char** argv) {
  CLI::App app("Writes recordings as a recorder would. The same options give the same bytes.",
               "make_recording");
  tools::Wishes wishes;
  tools::AddOptions(app, wishes);
  return tools::RunTool(app, argc, argv, [&] {
    return wishes.check ? tools::Check(wishes.file) : tools::Make(wishes);
  });
}
