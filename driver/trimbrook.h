#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "driver/files.h"
#include "driver/program.h"
#include "resources/resource.h"

namespace driver {

/// The program, freshly started, with its main window.
class Trimbrook : public Program {
 public:
  /// Started with these arguments, each after a blank.
  explicit Trimbrook(const std::string& arguments = "", const std::string& program = kProgram);

  const Window& main() const { return main_; }
  /// Waits until all that was posted to the program has been handled, and what it began with it.
  void Settle() const;
  /// A control of the main window; of an array, with its index.
  Window At(int id, int index = 0) const { return main_.Control(id + index); }
  std::string Text(int id) const { return At(id).Text(); }
  std::vector<std::string> Texts(const std::vector<int>& ids) const;
  /// Moves the focus to a control of the main window, as Tab does.
  void Focus(int id) const {
    main_.Ask(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(At(id).handle()), TRUE);
  }
  int First() const { return static_cast<int>(At(IDC_frmTrimbrook_Slider1).Ask(TBM_GETPOS)); }
  int Last() const { return static_cast<int>(At(IDC_frmTrimbrook_Slider2).Ask(TBM_GETPOS)); }
  /// Numbers of the cameras whose boxes can be ticked.
  std::vector<int> EnabledCameras() const;
  /// Ticks exactly these cameras among those that can be ticked.
  void ChooseCameras(const std::vector<int>& cameras) const;

  /// Opens the dialog for a source, or for a target.
  FileDialog SourceDialog() const { return OpenDialog(IDC_frmTrimbrook_Command1); }
  FileDialog TargetDialog() const { return OpenDialog(IDC_frmTrimbrook_Command2); }
  /// Answers the source dialog with this path, whatever comes of it.
  void AnswerSourceDialog(const std::string& path) const;
  /// Drops files onto the main window.
  void Drop(const std::vector<std::string>& paths) const;
  /// Opens a recording that the program takes.
  void OpenSource(const std::string& path) const {
    AnswerSourceDialog(path);
    AwaitSource(path);
  }
  /// Waits until this recording is open, or none.
  void AwaitSource(const std::string& path) const;
  /// Chooses a target; a file of this name is agreed to be replaced.
  void ChooseTarget(const std::string& path) const;
  /// Both.
  void Prepare(const std::string& source, const std::string& target) const {
    OpenSource(source);
    ChooseTarget(target);
  }
  /// Narrows the range by the sliders' keys.
  void ChooseBlocks(int first, int last) const;
  /// Types hours, minutes and seconds into the fields of the custom range, of which the first is
  /// given.
  void TypeTime(int firstBox, const std::vector<std::string>& time) const;
  /// Presses the hidden "Save To CD".
  void PressSaveToCd() const {
    PostMessageW(main_.handle(), WM_COMMAND, IDC_frmTrimbrook_Command7, 0);
  }
  /// Answers a message box with the button of this id, and waits for what follows.
  Message AnswerMessage(int button = IDOK) const;
  /// The one message box that a click opens, answered.
  Message MessageAfterClick(int id) const {
    At(id).ClickAndGoOn();
    return AnswerMessage();
  }
  /// Presses "Save File"; the progress window.
  Window StartSave() const;
  /// Saves to the end; the progress window in its finished look.
  Window Save() const {
    StartSave();
    return AwaitDone();
  }
  /// Saves to the end and leaves the progress window.
  void SaveAndLeave() const {
    StartSave();
    FinishSave();
  }
  /// Waits until the progress window has its finished look.
  Window AwaitDone() const;
  /// Saves, again and again if need be, until a save is caught: it stands still in its midst as
  /// long as the answer lives. It takes a long recording.
  std::shared_ptr<void> CatchSave() const;
  /// Waits until the modal window of this class is gone and the main window can be used.
  void AwaitGone(const std::string& className) const;
  /// Leaves the progress window by its last button.
  void LeaveSave() const;
  /// The same when the save that is under way is done.
  void FinishSave() const {
    AwaitDone();
    LeaveSave();
  }

 private:
  FileDialog OpenDialog(int button) const;

  Window main_;
};

/// A box as the program shows its refusals.
inline Message Refusal(const std::string& text) {
  return {"Message", text};
}

inline constexpr const char* kSourceDialog = "Select Source File";
inline constexpr const char* kTargetDialog = "Save New File";
inline constexpr const char* kDone = "File saving has been done!";
inline constexpr const char* kNoSource = "Please select the source file first!";

}  // namespace driver
