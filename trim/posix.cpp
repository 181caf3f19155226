#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "platform/posix/factories.h"
#include "platform/steady_clock.h"
#include "trim/iso_date_text.h"
#include "trim/system.h"

namespace trim {
namespace {

volatile std::sig_atomic_t cancelled = 0;

void Cancel(int) {
  cancelled = 1;
}

/// One that is ignored stays so: "nohup" and shells that start jobs behind them want that.
void Watch(int signal) {
  struct sigaction action = {};
  if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
  action.sa_handler = Cancel;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

/// Lets a helper of the system's hold the machine awake for as long as `lifeline` is open at its
/// other end, which is this program's alone. Where there is no such helper, nothing sleeps either.
void StartHelper(int lifeline) {
  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return;
  posix_spawn_file_actions_adddup2(&actions, lifeline, STDIN_FILENO);
  for (const int output : {STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
  const char* command[] = {"systemd-inhibit",
                           "--what=sleep:idle",
                           "--who=trim_recording",
                           "--why=A recording is being saved.",
                           "cat",
                           nullptr};
  pid_t helper = 0;
  posix_spawnp(&helper, command[0], &actions, nullptr, const_cast<char**>(command), environ);
  posix_spawn_file_actions_destroy(&actions);
}

}  // namespace

struct System::Parts {
  explicit Parts(const std::string& target)
      : core{*files, *names, dates, clock, names->FolderOf(target)} {}

  const std::unique_ptr<platform::Files> files = platform::MakePosixFiles();
  const std::unique_ptr<platform::FileNames> names = platform::MakePosixFileNames();
  IsoDateText dates;
  platform::SteadyClock clock;
  platform::Core core;
  int lifeline = -1;
};

System::System(const std::string& target) : parts_(std::make_unique<Parts>(target)) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) Watch(signal);
  // What reads the output may be gone; the save goes on.
  std::signal(SIGPIPE, SIG_IGN);
}

System::~System() {
  if (parts_->lifeline >= 0) close(parts_->lifeline);
}

platform::Core& System::core() const {
  return parts_->core;
}

bool System::IsCancelled() const {
  return cancelled != 0;
}

int System::Columns() const {
  constexpr int kUsualColumns = 80;
  if (isatty(STDERR_FILENO) == 0) return 0;
  winsize size = {};
  const bool told = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return told ? size.ws_col : kUsualColumns;
}

void System::KeepAwake() {
  int ends[2];
  if (parts_->lifeline >= 0 || pipe2(ends, O_CLOEXEC) != 0) return;
  StartHelper(ends[0]);
  close(ends[0]);
  parts_->lifeline = ends[1];
}

}  // namespace trim
