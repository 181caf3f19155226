#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "forms/arrow_group.h"
#include "forms/fonts.h"
#include "forms/form.h"
#include "forms/tool_tips.h"

namespace forms {

/// What a form keeps behind its door.
struct Form::State {
  explicit State(const layout::Form& table) : layout(table) {}

  const layout::Form& layout;
  std::map<int, Control*> byId;
  std::vector<Control*> inOrder;  ///< Rows' order; complete once loaded.
  std::vector<std::unique_ptr<Control>>
      nameless;  ///< Those that the window class has no member of.
  std::map<std::pair<const Control*, Event>, std::function<void()>> handlers;
  std::vector<Key> keys;
  std::map<int, ArrowGroup> groups;  ///< By the frame that holds them.
  int defaultButton = 0;             ///< Id of the button that Enter presses, 0 for none.
  Fonts fonts;
  ToolTips toolTips;

  std::optional<int> outerHeight;  ///< Twips, once set; until then the layout's client size holds.
  bool outdated = false;  ///< The system's settings changed while the window was minimised.
  POINT scrolled = {};    ///< Pixels that the content is scrolled by.

  int running = 0;                ///< Handlers of this form that are on the stack.
  bool failed = false;            ///< The load was left by a fault.
  bool wasForeground = false;     ///< When it was hidden.
  HWND ownersFocus = nullptr;     ///< What had the focus when this opened as a modal window.
  Control* firstFocus = nullptr;  ///< What asked for the focus before the window was shown.
};

}  // namespace forms
