// Reads recordings independently of the program: lists them, compares a saved file with its source,
// and checks that the images are what their entries say.

#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "tools/comparison.h"
#include "tools/listing.h"
#include "tools/options.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;

enum class Task { kList, kCompare, kCheck, kHelp };

/// What a command line asks for.
struct Request {
  Task task = Task::kList;
  std::optional<Range> blocks;
  std::optional<std::vector<int>> cameras;
  bool summary = false;

  bool Has(const StoredImage& image) const {
    return !cameras || std::binary_search(cameras->begin(), cameras->end(), image.camera + 1);
  }
};

using Value = const std::string&;
constexpr std::array<Option<Request>, 6> kOptions = {{
    {"blocks", "A-B", "only these blocks of the (source) file",
     [](Request& r, Value v) { r.blocks = ParseRange(v, 1, kMostBlocks); }},
    {"cameras", "LIST", "only these cameras, as 1,3,5-8",
     [](Request& r, Value v) { r.cameras = ParseNumbers(v, 1, 32); }},
    {"summary", nullptr, "list blocks, not images", [](Request& r, Value) { r.summary = true; }},
    {"compare", nullptr,
     "check that TARGET is what a save of these blocks gives:\nof these cameras, rebuilt, or of "
     "whole blocks when no\ncameras are given",
     [](Request& r, Value) { r.task = Task::kCompare; }},
    {"check", nullptr,
     "check that each image made by make_recording is whole, and\nof the camera and the time of "
     "its entry",
     [](Request& r, Value) { r.task = Task::kCheck; }},
    {"help", nullptr, "this text", [](Request& r, Value) { r.task = Task::kHelp; }},
}};

int PrintHelp() {
  std::cout << "Usage: list_recording [options] FILE\n"
               "       list_recording --compare [options] SOURCE TARGET\n"
               "Lists a recording, one line an image. Ends with 0 when all is well, with 1 when\n"
               "a file is not what it should be, with 2 when it cannot be used.\n\n"
            << HelpText(kOptions);
  return 0;
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
    if (request.summary) return;
    for (const StoredImage& image : block.images)
      if (request.Has(image)) std::cout << DescribeImage(block, image) << '\n';
  });
  return 0;
}

int Check(const std::string& path, const Request& request) {
  int count = 0;
  int failures = 0;
  ForEachBlock(path, request, [&](const StoredBlock& block) {
    for (const StoredImage& image : block.images) {
      if (!request.Has(image)) continue;
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

int Compare(const std::string& source, const std::string& target, const Request& request) {
  const bool rebuilt = request.cameras.has_value();
  const int count = rebuilt ? CompareImages(source, target, *request.cameras, request.blocks)
                            : CompareBlocks(source, target, request.blocks);
  std::cout << "same: " << count << (rebuilt ? " images\n" : " blocks\n");
  return 0;
}

int Run(int argc, char** argv) {
  Request request;
  const std::vector<std::string> files = ReadOptions(argc, argv, kOptions, request);
  if (request.task == Task::kHelp) return PrintHelp();
  if (files.size() != (request.task == Task::kCompare ? 2u : 1u))
    throw std::invalid_argument("wrong number of file names");
  if (request.task == Task::kCompare) return Compare(files[0], files[1], request);
  if (request.task == Task::kCheck) return Check(files[0], request);
  return List(files[0], request);
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
