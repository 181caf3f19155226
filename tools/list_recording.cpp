// Reads recordings independently of the program: reports what they hold and in which state they
// are, lists them, and holds a saved file against the recording that it comes from.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "tools/comparison.h"
#include "tools/console.h"
#include "tools/report.h"
#include "tools/system.h"

namespace tools {
namespace {

/// How the program ends.
enum ExitCode { kWhole = 0, kDamaged = 1, kNotUsable = 2 };

/// What a command line asks for.
struct Request {
  std::vector<std::string> files;
  bool compare = false;
  bool eitherWay = false;  ///< Whichever of the two is the source.
  bool listBlocks = false;
  bool listImages = false;
  bool json = false;
  bool noSum = false;
  std::string output;
  Narrowing narrowing;
};

constexpr char kExamples[] =
    "Examples:\n"
    "  list_recording recording.60D\n"
    "  list_recording --compare recording.60D part.60D\n"
    "  list_recording --list-blocks --blocks 120-190 recording.60D\n"
    "  list_recording --json --output report.json recording.60D\n\n"
    "Ends with 0 when each recording is whole, or the part what it should be; with 1 when one is\n"
    "damaged or has bytes behind its last block, or the part is different; with 2 when a file\n"
    "cannot be used or the command line is wrong.";

void AddOptions(CLI::App& app, Request& request) {
  app.add_option("FILE", request.files, "recordings")->required()->option_text(" ");
  CLI::Option* compare = app.add_flag(
      "--compare", request.compare,
      "of two files, a recording and a part saved of it: find the part's place in the recording, "
      "and check that it holds just what the recording holds there of its cameras");
  for (CLI::Option* list :
       {app.add_flag("--list-blocks", request.listBlocks, "list the blocks, without a report"),
        app.add_flag("--list-images", request.listImages, "list the images, too")})
    list->excludes(compare);
  AddText(app, "--blocks", "A-B", "list these blocks only; compare with these of the recording",
          [&](const auto& text) { request.narrowing.blocks = ParseRange(text, 1, kMostBlocks); });
  AddText(app, "--cameras", "LIST", "list these cameras only; the part is of these, as 1,3,5-8",
          [&](const auto& text) { request.narrowing.cameras = ParseNumbers(text, 1, 32); });
  app.add_flag("--json", request.json, "one line of JSON for programs, a file or comparison");
  app.add_flag("--no-sha256", request.noSum, "without the files' SHA-256, which reads all of them");
  app.add_option("--output", request.output, "write to this file, which must not exist")
      ->option_text("FILE");
  app.footer(kExamples);
}

ExitCode ReportOn(const std::string& path, const Request& request, std::ostream& out) {
  const Report report = Examine(path, !request.noSum);
  out << (request.json ? Json(report) : Text(report));
  return report.IsWhole() ? kWhole : kDamaged;
}

std::string HashText(const std::string& bytes) {
  if (bytes.empty()) return "-";
  char text[24];
  std::snprintf(text, sizeof text, "%016" PRIx64, Hash(bytes));
  return text;
}

/// One line about a block.
std::string DescribeBlock(const StoredBlock& block) {
  const std::string name = "block " + std::to_string(block.number);
  std::string damage = block.trouble;
  if (block.damagedImages > 0)
    damage += (damage.empty() ? "" : ", ") + Counted(block.damagedImages, "image");
  if (!damage.empty()) damage = " DAMAGED: " + damage;
  if (block.layout == nullptr) return name + damage;
  return name + " type=" + block.layout->name + " images=" + std::to_string(block.listedCount) +
         " start=" + TimeText(block.start) + " end=" + TimeText(block.end) +
         " sequence=" + std::to_string(Get(block.Trailer() + kSequence, 4)) +
         (block.ntsc ? " NTSC" : " PAL") +
         (block.trailer < block.layout->trailer ? " compact" : "") + damage;
}

/// One line about an image. Its hash leaves out zeros at the end, which may be padding.
std::string DescribeImage(const StoredBlock& block, const StoredImage& image) {
  const std::string name = std::to_string(block.number) + "." + std::to_string(image.index) +
                           " camera=" + std::to_string(image.camera + 1);
  if (!image.trouble.empty()) return name + " DAMAGED: " + image.trouble;
  return name + " time=" + TimeText(image.Stamp()) + " title=" + Quoted(image.title) +
         " flags=" + std::to_string(image.flags) + " text=" + Quoted(image.text) +
         " sound=" + std::to_string(image.sound.size() / kSectorBytes) +
         " size=" + std::to_string(image.bytes.size()) +
         " hash=" + HashText(image.bytes.substr(0, image.bytes.find_last_not_of('\0') + 1)) +
         " soundhash=" + HashText(image.sound);
}

ExitCode List(const std::string& path, const Request& request, std::ostream& out) {
  RecordingReader reader(path);
  const Range range = request.narrowing.blocks.value_or(Range{1, reader.BlockCount()});
  const auto& cameras = request.narrowing.cameras;
  if (range.last > reader.BlockCount())
    throw std::runtime_error(path + " has only " + Counted(reader.BlockCount(), "block"));
  Report listed;
  for (int number = range.first; number <= range.last; ++number) {
    const StoredBlock& block = reader.Read(number);
    listed.Add(block);
    out << DescribeBlock(block) << '\n';
    for (const StoredImage& image : block.images)
      if (request.listImages && (!cameras || cameras->count(image.camera + 1) > 0))
        out << DescribeImage(block, image) << '\n';
  }
  if (range.last == reader.BlockCount()) listed.rest = reader.Rest();
  out << (request.narrowing.blocks ? "these blocks: " : "") << listed.Verdict() << '\n';
  return listed.IsWhole() ? kWhole : kDamaged;
}

ExitCode CompareTwo(const Request& request, std::ostream& out) {
  if (request.files.size() != 2) throw std::invalid_argument("--compare wants two files");
  Comparison found = Compare(request.files[0], request.files[1], request.narrowing, !request.noSum);
  if (request.eitherWay && !found.difference.empty()) {
    const Comparison other =
        Compare(request.files[1], request.files[0], request.narrowing, !request.noSum);
    // A part is the smaller one, but for small images that a new block gives more room.
    if (other.difference.empty() || other.part.size < found.part.size) found = other;
  }
  out << (request.json ? Json(found) : Text(found));
  return found.difference.empty() ? kWhole : kDamaged;
}

/// Does something with each file, whatever becomes of the others.
ExitCode ForEachFile(const Request& request, std::ostream& out) {
  ExitCode worst = kWhole;
  for (const std::string& path : request.files) {
    ExitCode code = kNotUsable;
    try {
      const bool list = request.listBlocks || request.listImages;
      code = list ? List(path, request, out) : ReportOn(path, request, out);
    } catch (const std::runtime_error& failure) {
      if (request.files.size() == 1) throw;
      std::cerr << "list_recording: " << failure.what() << '\n';
    }
    if (code > worst) worst = code;
    if (request.files.size() > 1 && !request.json) out << '\n';
  }
  return worst;
}

ExitCode Answer(const Request& request, std::ostream& out) {
  const ExitCode code = request.compare ? CompareTwo(request, out) : ForEachFile(request, out);
  if (!out.flush()) throw std::runtime_error("the report cannot be written");
  return code;
}

/// Makes the file, which was not there before: another might be the recording. Leaves none when
/// there is nothing to be written into it.
ExitCode AnswerIntoFile(const Request& request) {
  const char* path = request.output.c_str();
  const int made = open(path, O_WRONLY | O_CREAT | O_EXCL, 0666);
  if (made < 0)
    throw std::runtime_error(request.output + " exists or cannot be made; nothing was done");
  close(made);
  try {
    std::ofstream file(path);
    return Answer(request, file);
  } catch (...) {
    std::remove(path);
    throw;
  }
}

}  // namespace
}  // namespace tools

int main(int argc, char** argv) {
  const auto utf8 = tools::Utf8OnConsole();
  const bool isAlone = tools::IsAloneOnConsole();
  CLI::App app("Tells what recordings hold, and whether they are whole.", "list_recording");
  tools::Request request;
  tools::AddOptions(app, request);
  const int code = tools::RunTool(app, argc, argv, [&] {
    // Two files that were dropped onto the program.
    if (isAlone && request.files.size() == 2) request.compare = request.eitherWay = true;
    return request.output.empty() ? tools::Answer(request, std::cout)
                                  : tools::AnswerIntoFile(request);
  });
  if (isAlone) {
    std::cout << "\nPress Enter to close this window." << std::flush;
    std::cin.get();
  }
  return code;
}
