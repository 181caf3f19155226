#include "tools/report.h"

#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tools/listing.h"

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

void AddTimes(ordered_json& json, const Times& times) {
  if (times.IsEmpty()) return;
  json["first"] = TimeText(times.first);
  json["last"] = TimeText(times.last);
}

/// One line, in ASCII; what is no UTF-8 in a path is replaced.
std::string Line(const ordered_json& json) {
  return json.dump(-1, ' ', true, ordered_json::error_handler_t::replace) + "\n";
}

std::string FileLine(const std::string& path, std::int64_t size, const std::string& sum) {
  return path + ": " + std::to_string(size) + " bytes" + (sum.empty() ? "" : ", SHA-256 " + sum) +
         "\n";
}

/// What damage there is, as "69 damaged images".
std::vector<std::string> DamageTexts(std::int64_t images, int blocks) {
  std::vector<std::string> texts;
  if (images > 0) texts.push_back(Counted(images, "damaged image"));
  if (blocks > 0) texts.push_back(Counted(blocks, "damaged block"));
  return texts;
}

std::string CamerasText(const std::set<int>& cameras) {
  std::vector<std::string> numbers;
  numbers.reserve(cameras.size());
  for (const int camera : cameras) numbers.push_back(std::to_string(camera));
  return (cameras.size() == 1 ? "camera " : "cameras ") + Joined(numbers);
}

std::string BlocksText(const Range& blocks) {
  if (blocks.first == blocks.last) return "block " + std::to_string(blocks.first);
  return "blocks " + std::to_string(blocks.first) + " to " + std::to_string(blocks.last);
}

/// What a part without a difference holds, as a sentence that stands for itself.
std::string Sentence(const Comparison& found) {
  const std::string times = found.times.IsEmpty() ? "" : " from " + TimesText(found.times);
  const std::string images = Counted(found.images, "image") + ", byte for byte, none missing, " +
                             "none changed, none added.\n";
  if (found.rebuilt)
    return found.part + " holds all images of " + CamerasText(found.cameras) + " that " +
           found.source + " holds in " + BlocksText(found.blocks) + "," + times + ": " + images;
  return found.part + " holds " + BlocksText(found.blocks) + " of " + found.source +
         " unchanged, with all images of " + CamerasText(found.cameras) + times + ": " + images;
}

/// What the source holds there and the part does not.
std::string LossText(const Comparison& found) {
  std::vector<std::string> losses = DamageTexts(found.damagedImages, found.damagedBlocks);
  if (!found.rebuilt)
    return losses.empty() ? "" : "In it, as in the source: " + Joined(losses) + ".\n";
  const auto add = [&](std::int64_t count, const std::string& thing, const char* why) {
    if (count > 0) losses.push_back(Counted(count, thing) + why);
  };
  add(found.largeImages, "image", " too large for a new block");
  add(found.lostSounds, "sound", " of older blocks");
  add(found.longTitles, "left-over", " of other titles behind a title");
  return losses.empty() ? "" : "Not in it: " + Joined(losses) + ".\n";
}

}  // namespace

void Report::Add(const StoredBlock& block) {
  ++blocks;
  damagedImages += block.damagedImages;
  if (!block.trouble.empty()) ++damagedBlocks;
  if (!block.isKnown) return;
  types.insert(block.layout->name);
  if (block.trouble.empty()) {
    if (times.IsEmpty()) times.first = block.start;
    times.last = block.end;
  }
  images += static_cast<std::int64_t>(block.images.size());
  for (const StoredImage& image : block.images) {
    if (!image.trouble.empty()) continue;
    Camera& camera = cameras[image.camera + 1];
    camera.titles.insert(TitleOf(block, image));
    camera.times.Add(image.seconds);
    ++camera.images;
  }
}

std::string Report::Verdict() const {
  std::vector<std::string> damage = DamageTexts(damagedImages, damagedBlocks);
  if (rest > 0) damage.push_back(Counted(rest, "byte") + " behind the last block");
  return damage.empty() ? "whole" : "damaged: " + Joined(damage);
}

Report Examine(const std::string& path, bool withSum) {
  Progress progress;
  RecordingReader reader(path, &progress);
  Report report;
  report.file = path;
  report.is20D = reader.Is20D();
  report.size = reader.Size();
  report.rest = reader.Rest();
  for (int number = 1; number <= reader.BlockCount(); ++number) report.Add(reader.Read(number));
  if (report.types.empty())
    throw std::runtime_error(path + " is no recording: no block is of a type that one has");
  if (withSum) report.sum = reader.Sum();
  return report;
}

std::string Text(const Report& report) {
  std::ostringstream text;
  text << FileLine(report.file, report.size, report.sum) << "Kind: "
       << (report.is20D ? "JPEG2000 image sequence (.20D)" : "wavelet image sequence (.60D)")
       << ", block type " << Joined({report.types.begin(), report.types.end()})
       << "\nBlocks: " << report.blocks
       << "\nTime: " << (report.times.IsEmpty() ? "none" : TimesText(report.times))
       << "\nImages: " << report.images << "\n";
  for (const auto& [number, camera] : report.cameras) {
    std::vector<std::string> titles;
    for (const std::string& title : camera.titles) titles.push_back(Quoted(title));
    text << "Camera " << number << ": " << Joined(titles) << ", " << Counted(camera.images, "image")
         << ", " << TimesText(camera.times) << "\n";
  }
  text << report.Verdict() << "\n";
  return text.str();
}

std::string Json(const Report& report) {
  ordered_json json = {{"file", report.file},
                       {"size", report.size},
                       {"kind", report.is20D ? "20D" : "60D"},
                       {"types", report.types},
                       {"blocks", report.blocks}};
  AddTimes(json, report.times);
  json["images"] = report.images;
  json["cameras"] = ordered_json::array();
  for (const auto& [number, camera] : report.cameras) {
    ordered_json one = {{"camera", number}, {"titles", ordered_json::array()}};
    for (const std::string& title : camera.titles) one["titles"].push_back(Utf8(title));
    one["images"] = camera.images;
    AddTimes(one, camera.times);
    json["cameras"].push_back(one);
  }
  json["damagedImages"] = report.damagedImages;
  json["damagedBlocks"] = report.damagedBlocks;
  json["rest"] = report.rest;
  if (!report.sum.empty()) json["sha256"] = report.sum;
  json["verdict"] = report.Verdict();
  return Line(json);
}

std::string Text(const Comparison& found) {
  const std::string files = FileLine(found.source, found.sourceSize, found.sourceSum) +
                            FileLine(found.part, found.partSize, found.partSum);
  if (!found.difference.empty()) return files + "different: " + found.difference + "\n";
  const int blocks = found.blocks.last - found.blocks.first + 1;
  return files + Sentence(found) + LossText(found) +
         "same: " + (found.rebuilt ? Counted(found.images, "image") : Counted(blocks, "block")) +
         "\n";
}

std::string Json(const Comparison& found) {
  const auto file = [](const std::string& path, std::int64_t size, const std::string& sum) {
    ordered_json json = {{"file", path}, {"size", size}};
    if (!sum.empty()) json["sha256"] = sum;
    return json;
  };
  ordered_json json = {{"source", file(found.source, found.sourceSize, found.sourceSum)},
                       {"part", file(found.part, found.partSize, found.partSum)},
                       {"same", found.difference.empty()}};
  if (!found.difference.empty()) {
    json["difference"] = Utf8(found.difference);
    return Line(json);
  }
  json["rebuilt"] = found.rebuilt;
  json["firstBlock"] = found.blocks.first;
  json["lastBlock"] = found.blocks.last;
  json["cameras"] = found.cameras;
  json["images"] = found.images;
  AddTimes(json, found.times);
  json["damagedImages"] = found.damagedImages;
  json["damagedBlocks"] = found.damagedBlocks;
  json["largeImages"] = found.largeImages;
  json["lostSounds"] = found.lostSounds;
  json["longTitles"] = found.longTitles;
  return Line(json);
}

}  // namespace tools
