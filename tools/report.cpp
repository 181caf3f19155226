#include "tools/report.h"

#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tools/console.h"

namespace tools {
namespace {

using nlohmann::ordered_json;

/// Joins texts as "a, b and c".
std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (std::size_t i = 0; i < texts.size(); ++i)
    joined += (i == 0 ? "" : i + 1 == texts.size() ? " and " : ", ") + texts[i];
  return joined;
}

std::string TimesText(const Times& times) {
  return TimeText(times.first) + " to " + TimeText(times.last);
}

/// One byte a character, as the recorder's own letters are not known.
std::string Utf8(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) text += static_cast<char>(0xC0 | byte >> 6);
    text += static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3F) : byte);
  }
  return text;
}

void AddFile(ordered_json& json, const FileFacts& file) {
  json["file"] = file.path;
  json["size"] = file.size;
  if (!file.sum.empty()) json["sha256"] = file.sum;
}

void AddTimes(ordered_json& json, const Times& times) {
  if (times.IsEmpty()) return;
  json["first"] = TimeText(times.first);
  json["last"] = TimeText(times.last);
}

/// How much there is of something that should not be there, or is not kept.
struct Count {
  const char* field;  ///< For programs.
  std::int64_t count;
  std::string thing;  ///< In the singular.
  const char* more = "";
};

void AddCounts(ordered_json& json, const std::vector<Count>& counts) {
  for (const Count& each : counts) json[each.field] = each.count;
}

/// As "69 damaged images and 1 damaged block"; empty when there is nothing.
std::string CountsText(const std::vector<Count>& counts) {
  std::vector<std::string> texts;
  for (const Count& each : counts)
    if (each.count > 0) texts.push_back(Counted(each.count, each.thing) + each.more);
  return Joined(texts);
}

std::vector<Count> DamageOf(const Report& report) {
  return {{"damagedImages", report.contents.damagedImages, "damaged image"},
          {"damagedBlocks", report.contents.damagedBlocks, "damaged block"},
          {"rest", report.rest, "byte", " behind the last block"}};
}

/// What the source holds there and a rebuilt part does not; one of whole blocks has no more than
/// the first two, and has them.
std::vector<Count> LossesOf(const Comparison& found) {
  return {{"damagedImages", found.contents.damagedImages, "damaged image"},
          {"damagedBlocks", found.contents.damagedBlocks, "damaged block"},
          {"largeImages", found.largeImages, "image", " too large for a new block"},
          {"lostSounds", found.lostSounds, "sound", " of older blocks"},
          {"longTitles", found.longTitles, "left-over", " of other titles behind a title"}};
}

/// One line, in ASCII; what is no UTF-8 in a path is replaced.
std::string Line(const ordered_json& json) {
  return json.dump(-1, ' ', true, ordered_json::error_handler_t::replace) + "\n";
}

std::string FileLine(const FileFacts& file) {
  const std::string sum = file.sum.empty() ? "" : ", SHA-256 " + file.sum;
  return file.path + ": " + Counted(file.size, "byte") + sum + "\n";
}

std::string CamerasText(const std::map<int, Images>& cameras) {
  std::vector<std::string> numbers;
  numbers.reserve(cameras.size());
  for (const auto& [number, images] : cameras) numbers.push_back(std::to_string(number));
  return (cameras.size() == 1 ? "camera " : "cameras ") + Joined(numbers);
}

std::string BlocksText(const Range& blocks) {
  if (blocks.first == blocks.last) return "block " + std::to_string(blocks.first);
  return "blocks " + std::to_string(blocks.first) + " to " + std::to_string(blocks.last);
}

/// What a part without a difference holds, as a sentence that stands for itself.
std::string Sentence(const Comparison& found) {
  const std::string images = " images of " + CamerasText(found.contents.cameras);
  const std::string times =
      found.contents.cameras.empty() ? "" : " from " + TimesText(found.contents.all.times);
  const std::string whole = " holds " + BlocksText(found.blocks) + " of " + found.source.path +
                            " unchanged, with all" + images + times;
  const std::string rebuilt = " holds all" + images + " that " + found.source.path + " holds in " +
                              BlocksText(found.blocks) + "," + times;
  return found.part.path + (found.rebuilt ? rebuilt : whole) + ": " +
         Counted(found.contents.all.count, "image") +
         ", byte for byte, none missing, none changed, none added.\n";
}

}  // namespace

void Report::Add(const StoredBlock& block) {
  ++blocks;
  contents.Add(block);
  if (block.layout != nullptr) types.insert(block.layout->name);
  if (!block.trouble.empty()) return;
  if (times.IsEmpty()) times.first = block.start;
  times.last = block.end;
}

std::string Report::Verdict() const {
  const std::string damage = CountsText(DamageOf(*this));
  return damage.empty() ? "whole" : "damaged: " + damage;
}

Report Examine(const std::string& path, bool withSum) {
  Progress progress;
  RecordingReader reader(path, &progress);
  Report report;
  report.is20D = reader.Is20D();
  report.rest = reader.Rest();
  for (int number = 1; number <= reader.BlockCount(); ++number) report.Add(reader.Read(number));
  if (report.types.empty())
    throw std::runtime_error(path + " is no recording: no block is of a type that one has");
  report.file = reader.Facts(withSum);
  return report;
}

std::string Text(const Report& report) {
  std::ostringstream text;
  text << FileLine(report.file) << "Kind: "
       << (report.is20D ? "JPEG2000 image sequence (.20D)" : "wavelet image sequence (.60D)")
       << ", block type " << Joined({report.types.begin(), report.types.end()})
       << "\nBlocks: " << report.blocks
       << "\nTime: " << (report.times.IsEmpty() ? "none" : TimesText(report.times))
       << "\nImages: " << report.contents.all.count + report.contents.damagedImages << "\n";
  for (const auto& [number, images] : report.contents.cameras) {
    std::vector<std::string> titles;
    for (const std::string& title : images.titles) titles.push_back(Quoted(title));
    text << "Camera " << number << ": " << Joined(titles) << ", " << Counted(images.count, "image")
         << ", " << TimesText(images.times) << "\n";
  }
  text << report.Verdict() << "\n";
  return text.str();
}

std::string Json(const Report& report) {
  ordered_json json;
  AddFile(json, report.file);
  json["kind"] = report.is20D ? "20D" : "60D";
  json["types"] = report.types;
  json["blocks"] = report.blocks;
  AddTimes(json, report.times);
  json["images"] = report.contents.all.count + report.contents.damagedImages;
  json["cameras"] = ordered_json::array();
  for (const auto& [number, images] : report.contents.cameras) {
    ordered_json& one = json["cameras"].emplace_back(ordered_json{{"camera", number}});
    for (const std::string& title : images.titles) one["titles"].push_back(Utf8(title));
    one["images"] = images.count;
    AddTimes(one, images.times);
  }
  AddCounts(json, DamageOf(report));
  json["verdict"] = report.Verdict();
  return Line(json);
}

std::string Text(const Comparison& found) {
  const std::string files = FileLine(found.source) + FileLine(found.part);
  if (!found.difference.empty()) return files + "different: " + found.difference + "\n";
  std::string losses = CountsText(LossesOf(found));
  if (!losses.empty())
    losses = (found.rebuilt ? "Not in it: " : "In it, as in the source: ") + losses + ".\n";
  const int blocks = found.blocks.last - found.blocks.first + 1;
  const std::string what =
      found.rebuilt ? Counted(found.contents.all.count, "image") : Counted(blocks, "block");
  return files + Sentence(found) + losses + "same: " + what + "\n";
}

std::string Json(const Comparison& found) {
  ordered_json json;
  AddFile(json["source"], found.source);
  AddFile(json["part"], found.part);
  json["same"] = found.difference.empty();
  if (!found.difference.empty()) {
    json["difference"] = Utf8(found.difference);
    return Line(json);
  }
  json["rebuilt"] = found.rebuilt;
  json["firstBlock"] = found.blocks.first;
  json["lastBlock"] = found.blocks.last;
  for (const auto& [number, images] : found.contents.cameras) json["cameras"].push_back(number);
  json["images"] = found.contents.all.count;
  AddTimes(json, found.contents.all.times);
  AddCounts(json, LossesOf(found));
  return Line(json);
}

}  // namespace tools
