// Writes recordings as a recorder of security cameras would, for tests and demonstrations. The same
// command line always gives the same bytes.

#include <ctime>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tools/options.h"
#include "tools/recorder.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;
constexpr int kMostImageBytes = 2000000;

/// What a command line asks for.
struct Request {
  Wishes wishes;
  std::string types;
  bool help = false;
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

/// The time stamp of a day, with or without a time: "2021-03-04", "2021-03-04 12:00:00".
std::int32_t ParseTime(const std::string& text) {
  constexpr std::time_t kEpoch = -315619200;  // 1960-01-01 00:00:00.
  for (const char* pattern : {"%Y-%m-%d", "%Y-%m-%d %H:%M:%S", "%Y-%m-%dT%H:%M:%S"}) {
    std::tm time = {};
    const char* end = strptime(text.c_str(), pattern, &time);
    const int day = time.tm_mday;
    const std::time_t seconds = timegm(&time);  // Makes another date of one that there is not.
    if (end && *end == 0 && time.tm_mday == day) return static_cast<std::int32_t>(seconds - kEpoch);
  }
  throw std::invalid_argument("not a time: " + text);
}

int Turns(const std::string& text) {
  return ParseInt(text, 0, kMostBlocks);
}

using Value = const std::string&;
constexpr std::array<Option<Request>, 21> kOptions = {{
    {"type", "TYPES",
     "block types, as 30 or 00,20: one after the other, in\nturn; 00, 10, 20, 30 (.60D) or 60 "
     "(.20D); by default 30\nor 60, as the name ends",
     [](Request& r, Value v) { r.types = v; }},
    {"blocks", "N", "blocks of 2 MiB (3)",
     [](Request& r, Value v) { r.wishes.blocks = ParseInt(v, 0, kMostBlocks); }},
    {"size", "A-B", "bytes of an image (4000-40000)",
     [](Request& r, Value v) { r.wishes.size = ParseRange(v, 1, kMostImageBytes); }},
    {"images", "N", "images a block at the most; as many as fit by default",
     [](Request& r, Value v) { r.wishes.mostImages = ParseInt(v, 0, 758); }},
    {"fill", nullptr, "the last image of each block reaches up to the trailer",
     [](Request& r, Value) { r.wishes.fill = true; }},
    {"tight", nullptr, "images use the last byte before their tail too",
     [](Request& r, Value) { r.wishes.style.tight = true; }},
    {"no-tails", nullptr, "images without tails (types 00, 10, 20)",
     [](Request& r, Value) { r.wishes.tails = false; }},
    {"cameras", "LIST", "cameras that record, as 1,3,5-8 (1-4); up to 32 in type 20",
     [](Request& r, Value v) { r.wishes.cameras = ParseNumbers(v, 1, 32); }},
    {"titles", "A|B|...", "titles of cameras 1, 2, ...; may be empty (CAM n)",
     [](Request& r, Value v) { SetTitles(r.wishes, v); }},
    {"start", "TIME", "time of the first image (2021-03-04 12:00:00)",
     [](Request& r, Value v) { r.wishes.start = ParseTime(v); }},
    {"step", "SECONDS", "from image to image (1); fractions are welcome",
     [](Request& r, Value v) { r.wishes.step = std::stod(v); }},
    {"pal", nullptr, "video standard PAL instead of NTSC",
     [](Request& r, Value) { r.wishes.style.pal = true; }},
    {"flags-every", "N", "each N-th image has flags, 1 to 3 in turn",
     [](Request& r, Value v) { r.wishes.flagsEvery = Turns(v); }},
    {"text-every", "N", "each N-th image has a transaction text (not in types 00, 10)",
     [](Request& r, Value v) { r.wishes.textEvery = Turns(v); }},
    {"text-length", "N", "length of these texts, 1 to 500 (different)",
     [](Request& r, Value v) { r.wishes.textLength = ParseRange(v, 1, kTextBytes); }},
    {"sound-every", "N", "each N-th image has sound (not in types 00, 10)",
     [](Request& r, Value v) { r.wishes.soundEvery = Turns(v); }},
    {"sound-sectors", "N", "sectors of that sound, 1 to 31 (different)",
     [](Request& r, Value v) { r.wishes.soundSectors = ParseRange(v, 1, 31); }},
    {"sparse", nullptr, "blocks that take one page of the disk: a single image of\nzeros in each",
     [](Request& r, Value) { r.wishes.sparse = true; }},
    {"dense", "A-B", "blocks of a sparse file that are full all the same;\nmay be repeated",
     [](Request& r, Value v) { r.wishes.dense.push_back(ParseRange(v, 1, kMostBlocks)); }},
    {"damage", "KIND[@BLOCK]", "damages one block or all; may be repeated; see below",
     [](Request& r, Value v) { r.wishes.damages.push_back(ParseDamage(v)); }},
    {"help", nullptr, "this text", [](Request& r, Value) { r.help = true; }},
}};

int PrintHelp() {
  std::cout << "Usage: make_recording [options] FILE\n"
               "Writes a recording. A name that ends in 20D makes a .20D file.\n\n"
            << HelpText(kOptions) << "\nKinds of damage:\n";
  for (const DamageKind& kind : DamageKinds()) std::cout << HelpLine(kind.name, kind.help);
  return 0;
}

const Layout& NamedLayout(const std::string& name, bool is20D) {
  for (const Layout& layout : kLayouts)
    if (name == layout.name && layout.is20D == is20D) return layout;
  throw std::invalid_argument("a file of this name has no block type " + name);
}

/// Adds to the wishes what depends on the file's name and on several options.
void Complete(Request& request, bool is20D) {
  Wishes& wishes = request.wishes;
  if (request.types.empty()) request.types = is20D ? "60" : "30";
  for (const std::string& name : Split(request.types, ','))
    wishes.layouts.push_back(&NamedLayout(name, is20D));
  for (const Layout* layout : wishes.layouts)
    if (wishes.cameras.back() > layout->cameras)
      throw std::invalid_argument("--cameras: blocks of this type know no more than 16");
  for (std::size_t i = 0; i < wishes.style.titles.size(); ++i)
    wishes.style.titles[i] = wishes.TitleOf(static_cast<int>(i));
}

int Run(int argc, char** argv) {
  Request request;
  const std::vector<std::string> files = ReadOptions(argc, argv, kOptions, request);
  if (request.help) return PrintHelp();
  if (files.size() != 1) throw std::invalid_argument("one file name is wanted");
  Complete(request, IsNameOf20D(files[0]));
  const std::uint32_t images = Record(request.wishes, files[0]);
  std::cout << files[0] << ": " << request.wishes.blocks << " blocks, " << images << " images\n";
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
