#pragma once

#include <cstdint>
#include <string>

#include "save/operations.h"
#include "save/save_state.h"

/// What the save and CD windows read from the main window's controls.
class MainWindowView {
 public:
  virtual ~MainWindowView() = default;

  virtual std::string SourcePath() = 0;       ///< Text of `Text1`, trimmed.
  virtual std::string TargetPath() = 0;       ///< Text of `Text6`, trimmed.
  virtual std::int32_t SizeEstimateMB() = 0;  ///< Value of `Text4`, megabytes.
  virtual std::int32_t FirstBlock() = 0;      ///< Value of `Slider1`, from 1.
  virtual std::int32_t LastBlock() = 0;       ///< Value of `Slider2`, from 1.

  /// What is chosen to be saved, under the target's name.
  SaveJob ChosenJob() {
    using Mode = SaveJob::Mode;
    return {.sourcePath = SourcePath(),
            .targetPath = TargetPath(),
            .firstBlock = FirstBlock(),
            .lastBlock = LastBlock(),
            .mode = mdlSave::blnSomeCameras ? Mode::kChosenCameras : Mode::kWholeBlocks,
            .cameras = static_cast<std::uint32_t>(mdlSave::lngCamSelLow)};
  }
};
