// Reads recordings independently of the program: lists them, compares a saved file with its source,
// and checks that the images are what their entries say.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "tools/command_line.h"
#include "tools/comparison.h"
#include "tools/listing.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;

const std::vector<Option> kOptions = {
    {"--blocks", "A-B", "only these blocks of the (source) file"},
    {"--cameras", "LIST", "only these cameras, as 1,3,5-8"},
    {"--summary", "", "list blocks, not images"},
    {"--compare", "",
     "check that TARGET is what a save of these blocks gives:\nof these cameras, "
     "rebuilt, or of whole blocks when no\ncameras are given"},
    {"--check", "",
     "check that each image shows the camera and the time of its\nentry, and that "
     "its bytes are whole"},
    {"--extract", "FOLDER", "write the bytes of each image into a file there"},
    {"--help", "", "this text"},
};

void PrintHelp() {
  std::cout << "Usage: list_recording [options] FILE\n"
               "       list_recording --compare [options] SOURCE TARGET\n"
               "Lists a recording, one line an image. Ends with 0 when all is well, with 1 when\n"
               "a file is not what it should be, with 2 when it cannot be used.\n\n"
            << HelpText(kOptions);
}

/// The part of a recording that the command line asks for.
struct Part {
  std::optional<Range> blocks;
  std::optional<std::vector<int>> cameras;

  explicit Part(const CommandLine& line) {
    if (line.Has("--blocks")) blocks = line.NumberRange("--blocks", {}, 1, kMostBlocks);
    if (line.Has("--cameras")) cameras = line.Numbers("--cameras", "", 1, 32);
  }

  bool Has(const StoredImage& image) const {
    return !cameras || std::binary_search(cameras->begin(), cameras->end(), image.camera + 1);
  }
};

/// Calls `visit` with each block of the part.
template <typename Visit>
void ForEachBlock(const std::string& path, const Part& part, Visit visit) {
  RecordingReader reader(path);
  const Range range = part.blocks.value_or(Range{1, reader.BlockCount()});
  for (int number = range.first; number <= std::min(range.last, reader.BlockCount()); ++number)
    visit(reader.Read(number));
  if (reader.Rest() > 0) std::cout << "rest " << reader.Rest() << " bytes\n";
}

int List(const std::string& path, const Part& part, bool summary) {
  ForEachBlock(path, part, [&](const StoredBlock& block) {
    std::cout << DescribeBlock(block) << '\n';
    if (summary) return;
    for (const StoredImage& image : block.images)
      if (part.Has(image)) std::cout << DescribeImage(block, image) << '\n';
  });
  return 0;
}

int Check(const std::string& path, const Part& part) {
  int count = 0;
  int failures = 0;
  ForEachBlock(path, part, [&](const StoredBlock& block) {
    for (const StoredImage& image : block.images) {
      if (!part.Has(image)) continue;
      ++count;
      const std::string failure = CheckImage(block, image);
      if (failure.empty()) continue;
      ++failures;
      std::cout << block.number << '.' << image.index << " camera " << image.camera + 1 << ' '
                << failure << '\n';
    }
  });
  std::cout << "checked " << count << " images, " << failures << " wrong\n";
  return failures == 0 && count > 0 ? 0 : 1;
}

int Extract(const std::string& path, const Part& part, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  const std::string ending = IsNameOf20D(path) ? ".j2k" : ".bin";
  ForEachBlock(path, part, [&](const StoredBlock& block) {
    for (const StoredImage& image : block.images) {
      if (!part.Has(image) || !image.trouble.empty()) continue;
      const std::string name = std::to_string(block.number) + "-" + std::to_string(image.index) +
                               "-camera" + std::to_string(image.camera + 1) + ending;
      std::ofstream file(folder / name, std::ios::binary);
      file.write(reinterpret_cast<const char*>(block.At(image.begin)),
                 image.bytesEnd - image.begin);
      if (!file.flush()) throw std::runtime_error(name + " could not be written");
    }
  });
  return 0;
}

int Compare(const std::string& source, const std::string& target, const Part& part) {
  const bool rebuilt = part.cameras.has_value();
  const int count = rebuilt ? CompareImages(source, target, *part.cameras, part.blocks)
                            : CompareBlocks(source, target, part.blocks);
  std::cout << "same: " << count << (rebuilt ? " images\n" : " blocks\n");
  return 0;
}

int Run(int argc, char** argv) {
  const CommandLine line(argc, argv, kOptions);
  if (line.Has("--help")) {
    PrintHelp();
    return 0;
  }
  const std::vector<std::string>& files = line.Arguments();
  if (files.size() != (line.Has("--compare") ? 2u : 1u))
    throw std::invalid_argument("wrong number of file names");
  const Part part(line);
  if (line.Has("--compare")) return Compare(files[0], files[1], part);
  if (line.Has("--check")) return Check(files[0], part);
  if (line.Has("--extract")) return Extract(files[0], part, line.Text("--extract", ""));
  return List(files[0], part, line.Has("--summary"));
}

}  // namespace
}  // namespace tools

int main(int argc, char** argv) {
  try {
    return tools::Run(argc, argv);
  } catch (const tools::Difference& difference) {
    std::cout << "different: " << difference.what() << "\n";
    return 1;
  } catch (const std::exception& failure) {
    std::cerr << "list_recording: " << failure.what() << " (--help tells more)\n";
    return 2;
  }
}
