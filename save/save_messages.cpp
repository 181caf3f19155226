#include "save/save_messages.h"

namespace {

/// "1 image", "2 images"; empty for none.
std::string Counted(std::int64_t count, const std::string& what) {
  if (count == 0) return "";
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// Why a save has not ended as wished.
SaveMessage MessageOfEnd(const SaveResult& result) {
  switch (result.end) {
    case SaveEnd::kSaved:
    case SaveEnd::kCancelled:
      return {};
    case SaveEnd::kNotRead:
      return {save_text::kReadError};
    case SaveEnd::kNotWritten:
      return {save_text::kWriteError};
    case SaveEnd::kTooLarge:
      return {save_text::kTooLarge, true};
    case SaveEnd::kNotNamed:
      return {std::string(save_text::kWriteError) +
              "\r\n\r\nThe new file is whole, but another program keeps it from getting its name. "
              "It stays here:\r\n" +
              result.detail};
    case SaveEnd::kNotValid:
      return {save_text::kNotValid, true};
    case SaveEnd::kNoImages:
      return {save_text::kNoImages, true};
    case SaveEnd::kFault:
      return {result.detail};
  }
  return {};
}

/// What damage to the recording has cost.
std::string MessageOfLosses(const SaveResult& result) {
  if (result.end != SaveEnd::kSaved && result.end != SaveEnd::kNoImages) return "";
  const std::string images = Counted(result.lostImages, "image");
  const std::string blocks = Counted(result.lostBlocks, "block");
  if (images.empty() && blocks.empty()) return "";
  return "The recording is damaged: " + images + (images.empty() || blocks.empty() ? "" : " and ") +
         blocks + " could not be kept.";
}

}  // namespace

std::vector<SaveMessage> MessagesOf(const SaveResult& result) {
  std::vector<SaveMessage> messages = {{MessageOfLosses(result), true}, MessageOfEnd(result)};
  std::erase_if(messages, [](const SaveMessage& message) { return message.text.empty(); });
  return messages;
}
