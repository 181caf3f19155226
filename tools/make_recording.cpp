// Writes recordings as a recorder of security cameras would, for tests and demonstrations. The same
// command line always gives the same bytes.

#include <cstdio>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tools/command_line.h"
#include "tools/picture.h"
#include "tools/recorder.h"
#include "tools/recording_reader.h"
#include "tools/time_text.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;
constexpr int kMostImageBytes = 2000000;

const std::vector<Option> kOptions = {
    {"--type", "TYPE",
     "block type 00, 10, 20, 30 (.60D) or 60 (.20D);\nby default 30 or 60, as the "
     "name ends"},
    {"--blocks", "N", "blocks of 2 MiB (3)"},
    {"--size", "A-B", "bytes of an image (4000-40000)"},
    {"--picture", "WxH", "size of the pictures in a .20D file (192x128)"},
    {"--opaque", "", "opaque bytes instead of pictures in a .20D file"},
    {"--images", "N", "images a block at the most; as many as fit by default,\n48 with pictures"},
    {"--fill", "", "the last image of each block reaches up to the trailer"},
    {"--tight", "", "images use the last byte before their tail too"},
    {"--no-tails", "", "images without tails (types 00, 10, 20)"},
    {"--cameras", "LIST", "cameras that record, as 1,3,5-8 (1-4); up to 32 in type 20"},
    {"--titles", "A|B|...", "titles of cameras 1, 2, ...; may be empty (CAM n)"},
    {"--start", "TIME", "time of the first image (2021-03-04 12:00:00)"},
    {"--step", "SECONDS", "from image to image (1); fractions are welcome"},
    {"--pal", "", "video standard PAL instead of NTSC"},
    {"--flags-every", "N", "each N-th image has flags, 1 to 3 in turn"},
    {"--text-every", "N", "each N-th image has a transaction text"},
    {"--text-length", "N", "length of these texts, 1 to 500 (different)"},
    {"--sound-every", "N", "each N-th image has sound"},
    {"--sound-sectors", "N", "sectors of that sound, 1 to 31 (different)"},
    {"--sparse", "", "blocks that take one page of the disk: a single image of\nzeros in each"},
    {"--dense", "A-B", "blocks of a sparse file that are full all the same;\nmay be repeated"},
    {"--damage", "KIND[@BLOCK]", "damages one block or all; may be repeated; see below"},
    {"--cut", "BYTES", "the file ends so many bytes early"},
    {"--seed", "N", "start of the random numbers (1)"},
    {"--help", "", "this text"},
};

void PrintHelp() {
  std::cout << "Usage: make_recording [options] FILE\n"
               "Writes a recording. A name that ends in 20D makes a .20D file.\n\n"
            << HelpText(kOptions) << "\nKinds of damage:\n";
  std::vector<Option> kinds;
  for (const DamageKind& kind : DamageKinds()) kinds.push_back({kind.name, "", kind.help});
  std::cout << HelpText(kinds);
}

const Layout& ChooseLayout(const CommandLine& line, bool is20D) {
  const std::string name = line.Text("--type", is20D ? "60" : "30");
  for (const Layout& layout : kLayouts)
    if (name == layout.name && layout.is20D == is20D) return layout;
  throw std::invalid_argument("a file of this name has no block type " + name);
}

std::vector<std::string> SplitTitles(const std::string& text) {
  std::vector<std::string> titles;
  std::istringstream in(text);
  for (std::string title; std::getline(in, title, '|');) {
    if (title.size() > kTailTitleBytes) throw std::invalid_argument("a title is too long");
    titles.push_back(title);
  }
  return titles;
}

void ReadContentWishes(const CommandLine& line, Wishes& wishes) {
  const Layout& layout = *wishes.style.layout;
  wishes.cameras = line.Numbers("--cameras", "1-4", 1, layout.cameras);
  wishes.titles = SplitTitles(line.Text("--titles", ""));
  wishes.start = ParseTime(line.Text("--start", "2021-03-04 12:00:00"));
  wishes.step = line.Decimal("--step", 1);
  wishes.flagsEvery = static_cast<int>(line.Number("--flags-every", 0, 0, kMostBlocks));
  wishes.textEvery = static_cast<int>(line.Number("--text-every", 0, 0, kMostBlocks));
  wishes.textLength = static_cast<int>(line.Number("--text-length", 0, 1, kTextBytes));
  wishes.soundEvery = static_cast<int>(line.Number("--sound-every", 0, 0, kMostBlocks));
  wishes.soundSectors = static_cast<int>(line.Number("--sound-sectors", 0, 1, 31));
  if (layout.entryParts == kNone && (wishes.textEvery > 0 || wishes.soundEvery > 0))
    throw std::invalid_argument("blocks of this type have neither text nor sound");
  for (std::size_t i = 0; i < wishes.style.titles.size(); ++i)
    wishes.style.titles[i] =
        i < wishes.titles.size() ? wishes.titles[i] : "CAM " + std::to_string(i + 1);
}

void ReadPictureWishes(const CommandLine& line, Wishes& wishes) {
  wishes.pictures = wishes.style.layout->is20D && !line.Has("--opaque") && !line.Has("--size");
  const std::string size = line.Text("--picture", "192x128");
  if (std::sscanf(size.c_str(), "%dx%d", &wishes.width, &wishes.height) != 2 ||
      wishes.width < kLeastWidth || wishes.height < kLeastHeight || wishes.width > 1920 ||
      wishes.height > 1080)
    throw std::invalid_argument("--picture: from 96x64 to 1920x1080, not " + size);
}

Wishes ReadWishes(const CommandLine& line) {
  const bool is20D = IsNameOf20D(line.Arguments().at(0));
  Wishes wishes;
  wishes.style.layout = &ChooseLayout(line, is20D);
  wishes.style.pal = line.Has("--pal");
  wishes.style.tails = !line.Has("--no-tails");
  wishes.style.tight = line.Has("--tight");
  ReadContentWishes(line, wishes);
  ReadPictureWishes(line, wishes);
  const int most = wishes.style.layout->mostImages;
  wishes.blocks = static_cast<int>(line.Number("--blocks", 3, 0, kMostBlocks));
  wishes.mostImages =
      static_cast<int>(line.Number("--images", wishes.pictures ? 48 : most, 0, most));
  wishes.size = line.NumberRange("--size", {4000, 40000}, 1, kMostImageBytes);
  wishes.fill = line.Has("--fill");
  wishes.sparse = line.Has("--sparse");
  for (const std::string& range : line.All("--dense"))
    wishes.dense.push_back(ParseRange("--dense", range, 1, kMostBlocks));
  for (const std::string& damage : line.All("--damage"))
    wishes.damages.push_back(ParseDamage(damage));
  wishes.cut = line.Number("--cut", 0, 0, kBlockBytes);
  wishes.seed = static_cast<std::uint64_t>(line.Number("--seed", 1, 0, INT64_MAX));
  return wishes;
}

int Run(int argc, char** argv) {
  const CommandLine line(argc, argv, kOptions);
  if (line.Has("--help")) {
    PrintHelp();
    return 0;
  }
  if (line.Arguments().size() != 1) throw std::invalid_argument("one file name is wanted");
  const Wishes wishes = ReadWishes(line);
  Recorder recorder(wishes);
  recorder.Record(line.Arguments()[0]);
  std::cout << line.Arguments()[0] << ": " << wishes.blocks << " blocks, " << recorder.ImageCount()
            << " images\n";
  return 0;
}

}  // namespace
}  // namespace tools

int main(int argc, char** argv) {
  try {
    return tools::Run(argc, argv);
  } catch (const std::invalid_argument& mistake) {
    std::cerr << "make_recording: " << mistake.what() << " (--help tells more)\n";
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "make_recording: " << failure.what() << "\n";
    return 1;
  }
}
