#include "trim/command_line.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <string_view>

#include "capture/block_type.h"
#include "capture/capture_time.h"
#include "capture/mdlFileProcessing.h"
#include "trim/iso_date_text.h"
#include "trim/outcome.h"

namespace trim {
namespace {

constexpr char kName[] = "trim_recording";
constexpr char kExamples[] =
    "Examples:\n"
    "  trim_recording day.60D clip.60D --from \"2021-03-04 12:01:30\" --to 2021-03-04T12:15:00\n"
    "  trim_recording day.60D doors.60D --cameras 1,3,5-8\n"
    "  trim_recording day.60D part.60D --blocks 120-190 --replace\n\n"
    "Without cameras, or with all that occur in the range, its blocks are copied as they are;\n"
    "otherwise a new recording is built from the images of these cameras. The target is there "
    "only\n"
    "when it is whole and on the medium. What was saved is told in one line.\n\n"
    "Ends with 0 when the recording is saved, with 1 when it is not, with 2 after wrong use, with "
    "3\n"
    "when it is saved but damage kept something out, with 4 when --clip found nothing in the "
    "range.";

[[noreturn]] void ThrowWrongUse(const std::string& why) {
  throw Refusal(why + " (--help tells more)", Outcome::kWrongUse);
}

/// A number from 1 to `most`.
std::int32_t ParseNumber(std::string_view text, std::int32_t most) {
  std::int32_t number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || number < 1 || number > most)
    ThrowWrongUse("\"" + std::string(text) + "\" is no number from 1 to " + std::to_string(most));
  return number;
}

/// "3-5", or "3" for "3-3".
BlockRange ParseRange(std::string_view text, std::int32_t most) {
  const std::size_t dash = text.find('-');
  const std::int32_t first = ParseNumber(text.substr(0, dash), most);
  const std::int32_t last =
      dash == std::string_view::npos ? first : ParseNumber(text.substr(dash + 1), most);
  if (first > last) ThrowWrongUse("\"" + std::string(text) + "\" is no range");
  return {first, last};
}

BlockRange ParseBlocks(const std::string& text) {
  return ParseRange(text, mdlFileProcessing::kMostBlocks);
}

/// "1,3,5-8" as a set of cameras.
std::uint32_t ParseCameras(const std::string& text) {
  std::uint32_t cameras = 0;
  for (const std::string& part : CLI::detail::split(text, ',')) {
    const BlockRange range = ParseRange(part, format::types::k20.cameras);
    for (std::int32_t camera = range.first; camera <= range.last; ++camera)
      cameras |= 1U << (camera - 1);
  }
  return cameras;
}

std::int64_t ParseTime(const std::string& text) {
  const auto date = IsoDateText().Parse(text);
  if (!date) ThrowWrongUse("\"" + text + "\" is no time like \"2021-03-04 12:01:30\"");
  return SecondsOfDate(*date);
}

void AddOptions(CLI::App& app, Request& request) {
  app.add_option("SOURCE", request.source, "the recording")->required()->option_text(" ");
  app.add_option("TARGET", request.target, "the new recording")->required()->option_text(" ");
  app.set_help_flag("--help", "this text");
  app.set_version_flag("--version", kName + std::string(" " TRIMBROOK_VERSION), "the version");
  const auto add = [&app](const char* name, const char* wanted, const char* help, auto parse,
                          auto& value) {
    const auto take = [parse, &value](const std::string& text) { value = parse(text); };
    return app.add_option_function<std::string>(name, take, help)->option_text(wanted);
  };
  auto* from = add("--from", "TIME", "the range begins with the block that runs at this time",
                   ParseTime, request.from);
  auto* to = add("--to", "TIME", "the range ends with the block that runs at this time", ParseTime,
                 request.to);
  auto* clip = app.add_flag("--clip", request.clip,
                            "take times beyond the recording as its ends; 4 when it holds nothing "
                            "of the range");
  add("--blocks", "A-B", "blocks from 1 on, instead of times", ParseBlocks, request.blocks)
      ->excludes(from)
      ->excludes(to)
      ->excludes(clip);
  add("--cameras", "LIST", "only these cameras, as 1,3,5-8", ParseCameras, request.cameras);
  app.add_flag("--replace", request.replace, "an earlier target may be replaced");
  app.footer(kExamples);
}

}  // namespace

std::optional<Request> ReadCommandLine(int argc, char** argv) {
  Request request;
  CLI::App app("Saves a part of a recording: a range of times or blocks, all cameras or some.",
               kName);
  // A path may begin with a slash there, too.
  app.allow_windows_style_options(false);
  AddOptions(app, request);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    if (end.get_exit_code() != 0) ThrowWrongUse(end.what());
    app.exit(end);
    return {};
  }
  return request;
}

}  // namespace trim
