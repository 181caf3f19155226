// Plays arbitrary keystroke scripts: whatever a script says, no key may stay down.

#include <fuzzer/FuzzedDataProvider.h>

#include <map>

#include "attacks/fuzz/check.h"
#include "platform/runtime_error.h"
#include "sendkeys/clsSendKeys.h"
#include "tests/support/fake_desktop.h"

namespace {

/// Thrown out of a script that repeats a key without end, which is no fault.
struct EnoughKeys {};

class KeyCounter : public FakeDesktop {
 public:
  void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) override {
    if (++events_ > 20000) throw EnoughKeys();
    down_[virtualKey] += flags & 2 ? -1 : 1;
    Demand(down_[virtualKey] >= 0, "a key goes up only after it went down");
  }
  bool AllKeysAreUp() const {
    for (const auto& [key, count] : down_)
      if (count != 0) return false;
    return true;
  }

 private:
  int events_ = 0;
  std::map<int, int> down_;
};

/// Scripts made of pieces that mean something; raw bytes now and then.
std::string ScriptOf(FuzzedDataProvider& data) {
  static const char* const kPieces[] = {
      "{",    "}",   "(",   ")",   "+",    "~",   "%", " ", "%(",   "+(",  "~(",      "TAB",
      "{F4}", "{~}", "{}}", " 3}", " -1}", "1e9", "a", "Z", "{UP ", "{(}", "{TAB 2}", "\xC3\xA4"};
  std::string script;
  while (data.remaining_bytes() > 0) {
    const std::size_t piece = data.ConsumeIntegralInRange<std::size_t>(0, std::size(kPieces));
    script += piece < std::size(kPieces) ? kPieces[piece] : data.ConsumeBytesAsString(2);
  }
  return script;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  KeyCounter desktop;
  desktop.versionWord = data.ConsumeBool() ? 0x80000000 : 0;
  clsSendKeys keys(desktop, "Trimbrook");
  try {
    keys.SendKeys(data.ConsumeBool() ? ScriptOf(data) : data.ConsumeRemainingBytesAsString());
  } catch (const RuntimeError& fault) {
    Demand(fault.source() == "Trimbrook.cSendKeys" && !fault.description().empty(),
           "a fault names its source");
  } catch (const EnoughKeys&) {
    return 0;
  }
  Demand(desktop.AllKeysAreUp(), "no key stays down");
  return 0;
}
