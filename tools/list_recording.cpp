// Reads recordings independently of the program: lists them, and compares a saved file with its
// source.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "tools/comparison.h"
#include "tools/listing.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;

/// What a command line asks for.
struct Request {
  std::vector<std::string> files;
  bool compare = false;
  bool blocksOnly = false;
  std::optional<Range> blocks;
  std::optional<std::vector<int>> cameras;

  bool Has(const StoredImage& image) const {
    return !cameras || std::binary_search(cameras->begin(), cameras->end(), image.camera + 1);
  }
};

constexpr char kExamples[] =
    "Examples:\n"
    "  list_recording --list-blocks recording.60D\n"
    "  list_recording --compare --cameras 1,3 --blocks 120-190 recording.60D part.60D\n\n"
    "Ends with 0 when all is well, with 1 when a file is not what it should be, with 2 when it\n"
    "cannot be used.";

void AddOptions(CLI::App& app, Request& request) {
  app.add_option("FILE", request.files, "a recording, or two to compare")
      ->required()
      ->option_text(" ");
  app.set_help_flag("--help", "this text");
  app.set_version_flag("--version", "list_recording " TRIMBROOK_VERSION, "the version");
  app.add_flag("--compare", request.compare,
               "check that the second file is what a save of these blocks of the first gives: of "
               "these cameras, rebuilt, or of whole blocks when no cameras are given");
  app.add_flag("--list-blocks", request.blocksOnly, "list the blocks only, not the images");
  const auto addText = [&](const char* name, const char* wanted, const char* help, auto set) {
    app.add_option_function<std::string>(name, set, help)->option_text(wanted);
  };
  addText("--blocks", "A-B", "only these blocks of the (source) file",
          [&](const std::string& text) { request.blocks = ParseRange(text, 1, kMostBlocks); });
  addText("--cameras", "LIST", "only these cameras, as 1,3,5-8",
          [&](const std::string& text) { request.cameras = ParseNumbers(text, 1, 32); });
  app.footer(kExamples);
}

/// Calls `visit` with each block of the request.
template <typename Visit>
void ForEachBlock(const std::string& path, const Request& request, Visit visit) {
  RecordingReader reader(path);
  const Range range = request.blocks.value_or(Range{1, reader.BlockCount()});
  for (int number = range.first; number <= std::min(range.last, reader.BlockCount()); ++number)
    visit(reader.Read(number));
  if (reader.Rest() > 0) std::cout << "rest " << reader.Rest() << " bytes\n";
}

int List(const std::string& path, const Request& request) {
  ForEachBlock(path, request, [&](const StoredBlock& block) {
    std::cout << DescribeBlock(block) << '\n';
    if (request.blocksOnly) return;
    for (const StoredImage& image : block.images)
      if (request.Has(image)) std::cout << DescribeImage(block, image) << '\n';
  });
  return 0;
}

int Compare(const std::string& source, const std::string& target, const Request& request) {
  const bool rebuilt = request.cameras.has_value();
  const int count = rebuilt ? CompareImages(source, target, *request.cameras, request.blocks)
                            : CompareBlocks(source, target, request.blocks);
  std::cout << "same: " << count << (rebuilt ? " images\n" : " blocks\n");
  return 0;
}

int Run(int argc, char** argv) {
  Request request;
  CLI::App app("Lists a recording, one line an image, or compares two.", "list_recording");
  AddOptions(app, request);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? 0 : 2;
  }
  if (request.files.size() != (request.compare ? 2u : 1u))
    throw std::invalid_argument("wrong number of file names");
  return request.compare ? Compare(request.files[0], request.files[1], request)
                         : List(request.files[0], request);
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
