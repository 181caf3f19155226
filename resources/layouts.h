#pragma once

#include "resources/layout.h"

/// The program's windows as tables, and the places that a window gives some controls later on.
namespace layout {

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
