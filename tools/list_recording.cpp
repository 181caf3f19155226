// Reads recordings independently of the program: reports what they hold and in which state they
// are, lists them, and holds a saved file against the recording that it comes from.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "tools/comparison.h"
#include "tools/listing.h"
#include "tools/report.h"
#include "tools/system.h"

namespace tools {
namespace {

constexpr int kMostBlocks = 4 << 20;

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
  app.set_help_flag("--help", "this text");
  app.set_version_flag("--version", "list_recording " TRIMBROOK_VERSION, "the version");
  CLI::Option* compare = app.add_flag(
      "--compare", request.compare,
      "of two files, a recording and a part saved of it: find the part's place in the recording, "
      "and check that it holds just what the recording holds there of its cameras");
  for (CLI::Option* list :
       {app.add_flag("--list-blocks", request.listBlocks, "list the blocks, without a report"),
        app.add_flag("--list-images", request.listImages, "list the images, too")})
    list->excludes(compare);
  const auto addText = [&](const char* name, const char* wanted, const char* help, auto set) {
    app.add_option_function<std::string>(name, set, help)->option_text(wanted);
  };
  addText("--blocks", "A-B", "list these blocks only; compare with these of the recording",
          [&](const std::string& text) {
            request.narrowing.blocks = ParseRange(text, 1, kMostBlocks);
          });
  addText("--cameras", "LIST", "list these cameras only; the part is of these, as 1,3,5-8",
          [&](const std::string& text) { request.narrowing.cameras = ParseNumbers(text, 1, 32); });
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

ExitCode List(const std::string& path, const Request& request, std::ostream& out) {
  RecordingReader reader(path);
  const Range range = request.narrowing.blocks.value_or(Range{1, reader.BlockCount()});
  const auto& cameras = request.narrowing.cameras;
  Report listed;
  for (int number = range.first; number <= std::min(range.last, reader.BlockCount()); ++number) {
    const StoredBlock& block = reader.Read(number);
    listed.Add(block);
    out << DescribeBlock(block) << '\n';
    if (!request.listImages) continue;
    for (const StoredImage& image : block.images)
      if (!cameras || std::binary_search(cameras->begin(), cameras->end(), image.camera + 1))
        out << DescribeImage(block, image) << '\n';
  }
  if (range.last >= reader.BlockCount()) listed.rest = reader.Rest();
  out << listed.Verdict() << '\n';
  return listed.IsWhole() ? kWhole : kDamaged;
}

ExitCode CompareTwo(const Request& request, std::ostream& out) {
  if (request.files.size() != 2) throw std::invalid_argument("--compare wants two files");
  Comparison found = Compare(request.files[0], request.files[1], request.narrowing, !request.noSum);
  if (request.eitherWay && !found.difference.empty()) {
    const Comparison other =
        Compare(request.files[1], request.files[0], request.narrowing, !request.noSum);
    // A part is the smaller one, but for small images that a new block gives more room.
    if (other.difference.empty() || other.partSize < found.partSize) found = other;
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
    worst = std::max(worst, code);
    if (request.files.size() > 1 && !request.json) out << '\n';
  }
  return worst;
}

/// Makes a file that there was not: another might be the recording.
void MakeNew(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
  if (file < 0) throw std::runtime_error(path + " exists or cannot be made; nothing was done");
  close(file);
}

ExitCode Answer(const Request& request, std::ostream& out) {
  const ExitCode code = request.compare ? CompareTwo(request, out) : ForEachFile(request, out);
  if (!out.flush()) throw std::runtime_error("the report cannot be written");
  return code;
}

/// Leaves no file when there is nothing to be written into it.
ExitCode AnswerIntoFile(const Request& request) {
  MakeNew(request.output);
  try {
    std::ofstream file(request.output);
    return Answer(request, file);
  } catch (...) {
    std::remove(request.output.c_str());
    throw;
  }
}

int Run(int argc, char** argv, bool isAlone) {
  Request request;
  CLI::App app("Tells what recordings hold, and whether they are whole.", "list_recording");
  AddOptions(app, request);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? 0 : kNotUsable;
  }
  // Two files that were dropped onto the program.
  if (isAlone && request.files.size() == 2) request.compare = request.eitherWay = true;
  return request.output.empty() ? Answer(request, std::cout) : AnswerIntoFile(request);
}

int Guarded(int argc, char** argv, bool isAlone) {
  try {
    return Run(argc, argv, isAlone);
  } catch (const std::exception& failure) {
    std::cerr << "list_recording: " << failure.what() << " (--help tells more)\n";
    return kNotUsable;
  }
}

}  // namespace
}  // namespace tools

int main(int argc, char** argv) {
  const auto utf8 = tools::Utf8OnConsole();
  const bool isAlone = tools::IsAloneOnConsole();
  const int code = tools::Guarded(argc, argv, isAlone);
  if (isAlone) {
    std::cout << "\nPress Enter to close this window." << std::flush;
    std::cin.get();
  }
  return code;
}
