// Writes recordings as a recorder of security cameras would, for tests and demonstrations. The same
// command line always gives the same bytes.

#include <CLI/CLI.hpp>
#include <ctime>
#include <exception>
#include <iostream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "tools/payload.h"
#include "tools/recorder.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;
constexpr int kMostImageBytes = 2000000;

/// What a command line asks for.
struct Request {
  std::string file;
  bool check = false;
  std::string types;
  std::vector<std::string> damages;
  std::vector<std::string> dense;
  Wishes wishes;
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
std::int64_t ParseTime(const std::string& text) {
  constexpr std::time_t kEpoch = -315619200;  // 1960-01-01 00:00:00.
  for (const char* pattern : {"%Y-%m-%d", "%Y-%m-%d %H:%M:%S", "%Y-%m-%dT%H:%M:%S"}) {
    std::tm time = {};
    const char* end = strptime(text.c_str(), pattern, &time);
    const int day = time.tm_mday;
    const std::int64_t stamp = timegm(&time) - kEpoch;  // Of another date if there is no such one.
    if (end && *end == 0 && time.tm_mday == day && stamp >= 0 &&
        stamp <= std::numeric_limits<std::uint32_t>::max())
      return stamp;
  }
  throw std::invalid_argument("not a time that a recording can have: " + text);
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

/// Adds the options of a command line, which fill a request.
void AddOptions(CLI::App& app, Request& request) {
  Wishes& wishes = request.wishes;
  const auto add = [&](const char* name, auto& value, const char* wanted, const char* help) {
    return app.add_option(name, value, help)->option_text(wanted);
  };
  const auto addCount = [&](const char* name, int& value, int most, const char* help) {
    add(name, value, "N", help)->check(CLI::Range(0, most));
  };
  const auto addRepeated = [&](const char* name, auto& values, const char* wanted,
                               const char* help) {
    add(name, values, wanted, help)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
  };
  // `set` understands the option's text, or raises `std::invalid_argument`.
  const auto addText = [&](const char* name, const char* wanted, const char* help, auto set) {
    app.add_option_function<std::string>(name, set, help)->option_text(wanted);
  };
  const auto addRange = [&](const char* name, Range& range, int most, const char* help) {
    addText(name, "A-B", help,
            [&range, most](const std::string& text) { range = ParseRange(text, 1, most); });
  };

  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  add("FILE", request.file, " ", "a name that ends in 20D makes a .20D file")->required();
  app.set_help_flag("--help", "this text");
  app.set_version_flag("--version", "make_recording " TRIMBROOK_VERSION, "the version");
  app.add_flag(
      "--check", request.check,
      "checks that each image of FILE, which make_recording has made, is whole, and of the "
      "camera and the time of its entry");
  add("--type", request.types, "TYPES",
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
  addText("--cameras", "LIST", "cameras that record, as 1,3,5-8 (1-4); up to 32 in type 20",
          [&](const std::string& text) { wishes.cameras = ParseNumbers(text, 1, 32); });
  addText("--titles", "A|B|...", "titles of cameras 1, 2, ..., which may be empty (CAM n)",
          [&](const std::string& text) { SetTitles(wishes, text); });
  addText("--start", "TIME", "time of the first image (2021-03-04 12:00:00), up to 2096",
          [&](const std::string& text) { wishes.start = ParseTime(text); });
  add("--step", wishes.step, "SECONDS", "from image to image (1); fractions are welcome");
  app.add_flag("--pal", wishes.style.pal, "video standard PAL instead of NTSC");
  addCount("--text-every", wishes.textEvery, kMostBlocks,
           "each N-th image has a transaction text (not in types 00, 10)");
  addRange("--text-length", wishes.textLength, kTextBytes, "length of these texts (1-500)");
  addCount("--sound-every", wishes.soundEvery, kMostBlocks,
           "each N-th image has sound (not in types 00, 10)");
  addRange("--sound-sectors", wishes.soundSectors, 31, "sectors of that sound (1-31)");
  app.add_flag("--sparse", wishes.sparse,
               "blocks that take one page of the disk: a single image of zeros in each");
  addRepeated("--dense", request.dense, "A-B",
              "blocks of a sparse file that are full all the same; may be repeated");
  addRepeated("--damage", request.damages, "KIND[@BLOCK]",
              "damages all blocks or one; may be repeated; see below");
  app.footer(Footer());
}

const Layout& NamedLayout(const std::string& name, bool is20D) {
  for (const Layout& layout : kLayouts)
    if (name == layout.name && layout.is20D == is20D) return layout;
  throw std::invalid_argument("a file of this name has no block type " + name);
}

/// Adds to the wishes what depends on the file's name and on several options.
void Complete(Request& request) {
  Wishes& wishes = request.wishes;
  const bool is20D = IsNameOf20D(request.file);
  for (const std::string& damage : request.damages) wishes.damages.push_back(ParseDamage(damage));
  for (const std::string& range : request.dense)
    wishes.dense.push_back(ParseRange(range, 1, kMostBlocks));
  if (request.types.empty()) request.types = is20D ? "60" : "30";
  for (const std::string& name : Split(request.types, ','))
    wishes.layouts.push_back(&NamedLayout(name, is20D));
  for (const Layout* layout : wishes.layouts)
    if (wishes.cameras.back() > layout->cameras)
      throw std::invalid_argument("--cameras: blocks of this type know no more than 16");
  for (std::size_t i = 0; i < wishes.style.titles.size(); ++i)
    wishes.style.titles[i] = wishes.TitleOf(static_cast<int>(i));
}

int Make(Request& request) {
  Complete(request);
  const std::uint32_t images = Record(request.wishes, request.file);
  std::cout << request.file << ": " << request.wishes.blocks << " blocks, " << images
            << " images\n";
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

int Run(int argc, char** argv) {
  Request request;
  CLI::App app("Writes recordings as a recorder would. The same options give the same bytes.",
               "make_recording");
  AddOptions(app, request);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? 0 : 2;
  }
  return request.check ? Check(request.file) : Make(request);
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
