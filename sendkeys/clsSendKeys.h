#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/runtime_error.h"

/// Plays keystroke scripts: turns them into key events for whatever has the keyboard's focus, one
/// after the other, without waiting for it to take them.
///
/// In a script "+", "~" and "%" are Shift, Control and Alt. Before a "(" they are held down to the
/// matching ")"; anywhere else they are pressed and let go at once, so a modified key is always
/// written as a group: "%(K)" is Alt+K. "{NAME}" is a key by name or character, "{NAME 3}" the
/// same three times. Any other character is typed by its key, without its shift state.
///
/// Faults are raised as a `RuntimeError` whose source is the program's name + ".cSendKeys".
/// Positions in their texts count UTF-16 units from 1.
class clsSendKeys {
 public:
  clsSendKeys(platform::Desktop& desktop, const std::string& programName);

  /// Plays a script. `Wait` has no effect. At a fault the keys already sent stay sent, held
  /// modifiers are let go, and number 0, or the number of the fault raised inside, is raised.
  void SendKeys(const std::string& sKeys, bool Wait = false);
  /// Presses and lets go the key of this name, or of its first character, `lCount` times, rounded
  /// half to even; none or below none sends nothing. Raises 9 for a key that there is not and 6
  /// for a count beyond 32 bits.
  void KeyPress(const std::string& sKey, double lCount);
  /// One key-down event; the code's low byte is the virtual key.
  void KeyDown(std::int32_t vKey);
  /// One key-up event.
  void KeyUp(std::int32_t vKey);
  /// Virtual key of a text's first character, 255 when no key gives it; 0 for an empty text.
  std::int32_t KeyCode(const std::string& sChar);

 private:
  std::size_t SendItem(const std::u16string& script, std::size_t position);
  std::size_t SendModifier(const std::u16string& script, std::size_t position);
  std::size_t CloseGroup(std::size_t position);
  std::size_t SendBraced(const std::u16string& script, std::size_t position);
  void SendNamed(const std::u16string& content, std::size_t positionBehind);
  void Press(const std::u16string& key, double count);
  std::int32_t CodeOfFirst(const std::u16string& text);
  void LetGoOfTop();
  RuntimeError ScriptFault(const std::string& message) const;

  platform::Desktop& desktop_;
  std::string source_;
  std::vector<std::int32_t> heldModifiers_;  // Virtual keys of the open groups, innermost last.
};
