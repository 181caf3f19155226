#pragma once

#include "resources/layout.h"

/// The program's windows as tables, and the places that a window gives some controls later on.
namespace layout {

extern const Form kFrmTrimbrook;
extern const Form kFrmSaveFile;
extern const Form kFrmSaveToCD;

/// How high the main window stands, without or with the custom time range; twips.
struct WindowHeight {
  int window;  ///< The whole window with its frame.
  int frame3;
  int buttonsTop;  ///< Of `Command3`, `Command4` and `Command7`.
};
inline constexpr WindowHeight kCompact = {7305, 3195, 6300};
inline constexpr WindowHeight kExpanded = {11205, 7095, 10200};
/// How far the expanded window moves up, twips.
inline constexpr int kExpandedRise = 1950;

/// Where the camera setup stands in a recording of 16 or 32 cameras; twips.
struct CameraArrangement {
  int frame7Left;
  int frame7Width;
  int pictureButtonsLeft;  ///< Of `cmdSet` and `cmdClear`.
  int command8Left;
};
inline constexpr CameraArrangement kSixteenCameras = {2305, 6150, 4130, 4490};
inline constexpr CameraArrangement kThirtyTwoCameras = {390, 9975, 7980, 8340};

/// Where the bottom buttons stand, without or with "Save To CD" between them; twips.
struct ButtonArrangement {
  int command3Left;
  int command4Left;
};
inline constexpr ButtonArrangement kWithoutCd = {2800, 6515};
inline constexpr ButtonArrangement kWithCd = {2200, 7115};

}  // namespace layout
