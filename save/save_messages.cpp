#include "save/save_messages.h"

namespace {

/// "1 image", "2 images"; empty for none.
std::string Counted(std::int64_t count, const std::string& what) {
  if (count == 0) return "";
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The same for the recording that is read and for the file that is written.
const char* SentenceOf(platform::Failure::Kind kind) {
  using Kind = platform::Failure::Kind;
  switch (kind) {
    case Kind::kDiskFull:
      return "The disk is full.";
    case Kind::kDiskProtected:
      return "The disk is write-protected.";
    case Kind::kFileProtected:
      return "The file is write-protected.";
    case Kind::kTaken:
      return "A file has this name.";
    case Kind::kUnseen:
      return "A hidden or system file has this name.";
    case Kind::kFolder:
      return "A folder has this name.";
    case Kind::kChanged:
      return "The recording has changed since it was opened.";
    case Kind::kIsSource:
      return "The target is the recording itself.";
    case Kind::kNoAnswer:
      return "The disk does not answer.";
    default:
      return "";
  }
}

std::string Because(const char* what, const platform::Failure& why, const char* inUse,
                    const char* missing) {
  using Kind = platform::Failure::Kind;
  const std::string reason = why.kind == Kind::kInUse     ? inUse
                             : why.kind == Kind::kMissing ? missing
                             : why.kind == Kind::kOther   ? why.text
                                                          : SentenceOf(why.kind);
  return reason.empty() ? what : what + ("\r\n\r\n" + reason);
}

/// Why a save has not ended as wished.
SaveMessage MessageOfEnd(const SaveResult& result) {
  switch (result.end) {
    case SaveEnd::kSaved:
    case SaveEnd::kCancelled:
      return {};
    case SaveEnd::kNotRead:
      return {MessageOfReading(result.why)};
    case SaveEnd::kNotWritten:
      return {MessageOfWriting(result.why)};
    case SaveEnd::kTaken:
      return {MessageOfWriting({platform::Failure::Kind::kTaken})};
    case SaveEnd::kTooLarge:
      return {save_text::kTooLarge, true};
    case SaveEnd::kNoSpace:
      return {save_text::kNoSpace, true};
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

std::string MessageOfReading(const platform::Failure& why) {
  return Because(save_text::kReadError, why, "The recording is in use by another program.",
                 "The recording is no longer there.");
}

std::string MessageOfWriting(const platform::Failure& why) {
  return Because(save_text::kWriteError, why, "The file is in use by another program.",
                 "The folder does not exist.");
}

std::vector<SaveMessage> MessagesOf(const SaveResult& result) {
  std::vector<SaveMessage> messages = {{MessageOfLosses(result), true}, MessageOfEnd(result)};
  std::erase_if(messages, [](const SaveMessage& message) { return message.text.empty(); });
  return messages;
}
