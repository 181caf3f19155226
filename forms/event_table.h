#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "forms/control.h"

namespace forms {

/// What a form does when its controls tell something, and when keys are pressed beyond those of the
/// dialog manager.
class EventTable {
 protected:
  using Handler = std::function<void()>;
  /// One line of the table.
  struct Binding {
    const Control& control;
    Event event;
    Handler handler;
  };
  /// A key with its modifiers (a sum of FCONTROL, FSHIFT, FALT) and what it does.
  struct Key {
    BYTE modifiers;
    WORD virtualKey;
    Handler handler;
    bool inText = true;  ///< Also while the focus is in a text box, which may have a use for it.
  };

  void Bind(std::initializer_list<Binding> bindings) {
    for (const auto& [control, event, handler] : bindings) handlers_[{&control, event}] = handler;
  }
  /// Binds an event of every element of a control array; the handler gets the index.
  template <typename T>
  void BindArray(const ControlArray<T>& array, Event event,
                 const std::function<void(int)>& handler) {
    for (int i = array.first(); i <= array.last(); ++i)
      Bind({{array(i), event, [handler, i] { handler(i); }}});
  }
  void BindKeys(std::vector<Key> keys) { keys_ = std::move(keys); }

  /// The handler of an event, null for none.
  const Handler* HandlerOf(const Control& control, Event event) const {
    const auto found = handlers_.find({&control, event});
    return found == handlers_.end() ? nullptr : &found->second;
  }
  /// The handler of a key with the modifiers that are held now, null for none.
  const Handler* HandlerOf(WPARAM virtualKey, bool inText) const;

 private:
  std::map<std::pair<const Control*, Event>, Handler> handlers_;
  std::vector<Key> keys_;
};

}  // namespace forms
