#pragma once

#include <cstdint>
#include <optional>
#include <span>

/// Windows as data: what stands where in a form. Portable, so that native tests can check a table
/// without opening a window.
namespace layout {

/// The kinds of controls that a form can hold.
enum class Kind : std::uint8_t {
  kLabel,
  kTextBox,
  kButton,
  kPictureButton,
  kCheckBox,
  kOptionButton,
  kFrame,
  kLine,
  kSlider,
  kUpDown,
  kMonthCalendar,
  kProgressBar,
  kAnimation,
  kComboBox,
  kTimer,
};

/// What a row's control is beyond its kind; a sum of these bits.
enum Style : std::uint32_t {
  kPlain = 0,
  kHidden = 1U << 0,     ///< Not shown at first.
  kDisabled = 1U << 1,   ///< Not enabled at first.
  kDefault = 1U << 2,    ///< The button that Enter presses.
  kCancel = 1U << 3,     ///< The button that Esc presses.
  kReadOnly = 1U << 4,   ///< A text box to read, select and copy from.
  kNumber = 1U << 5,     ///< A text box for digits.
  kShowsEnd = 1U << 6,   ///< A text box that shows its text's end and all of it as tool tip.
  kCentered = 1U << 7,   ///< Text in the middle.
  kRight = 1U << 8,      ///< Text at the right.
  kNoTabStop = 1U << 9,  ///< Tab passes it by.
  kGroup = 1U << 10,     ///< The first of a group that the arrow keys walk through.
  kArrows = 1U << 11,    ///< Tab passes all of these in a frame as one; the arrows move among them.
};

/// The font of a single control that does not take the form's own.
struct Font {
  const char* face;
  bool serif;         ///< What the system's choice must be where the face is missing.
  int tenthsOfPoint;  ///< At the system's usual text size.
  bool bold;
};

/// Where something stands in what holds it: twips, 1,440 to the inch at the system's usual text
/// size.
struct Place {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;  ///< Of a combo box: closed.
};

/// What only some controls have.
struct Traits {
  std::uint32_t styles = kPlain;
  const char* name = nullptr;  ///< What a screen reader says when no label or caption names it.
  const char* toolTip = nullptr;
  int resource = 0;            ///< Icon of a picture button.
  int buddy = 0;               ///< Id of the text box that an up-down counts in; of the check box
                               ///< that a label is part of.
  int interval = 0;            ///< Milliseconds of a timer.
  const Font* font = nullptr;  ///< Null for the form's font.
};

/// One control. The rows' order is the tab order; a label that names a control stands right before
/// it. A control in a frame is placed relative to the frame and comes after the frame's row.
struct Row : Place, Traits {
  constexpr Row() = default;
  constexpr Row(int rowId, Kind rowKind, int frame, const char* text, Place place,
                const Traits& traits = {})
      : Place(place), Traits(traits), id(rowId), kind(rowKind), container(frame), caption(text) {}

  int id = 0;  ///< From resource.h.
  Kind kind = Kind::kLabel;
  int container = 0;  ///< Id of the frame that it stands in, 0 for the window.
  const char* caption = "";
};

/// Another place of a control, and whether it shows. What is not given stays as it is.
struct Rearrangement {
  static constexpr int kAsItIs = -1;

  int id;
  struct NewPlace {
    int left = kAsItIs;  ///< Twips.
    int top = kAsItIs;
    int width = kAsItIs;
    int height = kAsItIs;
  } place;
  std::optional<bool> visible = {};
};

/// Rearranges the controls of a form: `form.ControlById(id)` takes the new place of each.
template <typename Form>
void Apply(std::span<const Rearrangement> rearrangements, Form& form) {
  constexpr int kAsItIs = Rearrangement::kAsItIs;
  for (const auto& [id, place, visible] : rearrangements) {
    auto& control = form.ControlById(id);
    if (place.left != kAsItIs) control.SetLeft(place.left);
    if (place.top != kAsItIs) control.SetTop(place.top);
    if (place.width != kAsItIs) control.SetWidth(place.width);
    if (place.height != kAsItIs) control.SetHeight(place.height);
    if (visible) control.SetVisible(*visible);
  }
}

/// A form: its window class (which is its name), its caption and its controls.
struct Form {
  const char* name;
  const char* caption;
  int clientWidth;  ///< Twips inside the window's frame at first.
  int clientHeight;
  std::span<const Row> rows;
  bool canMinimize = false;
  int icon = 0;  ///< Icon resource of the window, 0 for none.
};

// The program's windows, and the places that they give some controls later on.

extern const Form kFrmTrimbrook;
extern const Form kFrmSaveFile;
extern const Form kFrmSaveToCD;

/// Height of the main window with its frame, without or with the custom time range; twips.
inline constexpr int kCompactHeight = 7305;
inline constexpr int kExpandedHeight = 11205;
/// How far the expanded window moves up, twips.
inline constexpr int kExpandedRise = 1950;

/// The main window without and with the custom time range.
extern const std::span<const Rearrangement> kCompact;
extern const std::span<const Rearrangement> kExpanded;
/// Its camera setup for a recording of 16 or 32 cameras.
extern const std::span<const Rearrangement> kSixteenCameras;
extern const std::span<const Rearrangement> kThirtyTwoCameras;
/// Its bottom buttons without and with "Save To CD" between them.
extern const std::span<const Rearrangement> kWithoutCd;
extern const std::span<const Rearrangement> kWithCd;

}  // namespace layout
