// Saves parts of recordings without windows.

#include <cstdio>
#include <exception>
#include <new>

#include "platform/runtime_error.h"
#include "trim/command_line.h"
#include "trim/system.h"
#include "trim/trimming.h"

namespace trim {
namespace {

int Run(int argc, char** argv) {
  const auto request = ReadCommandLine(argc, argv);
  if (!request) return 0;
  System system(request->target);
  system.KeepAwake();
  const Saved saved = Trim(system, *request);
  std::printf("%s\n", saved.report.c_str());
  return static_cast<int>(saved.outcome);
}

int Fail(const char* why, Outcome outcome) {
  std::fprintf(stderr, "trim_recording: %s\n", why);
  return static_cast<int>(outcome);
}

}  // namespace
}  // namespace trim

int main(int argc, char** argv) {
  try {
    return trim::Run(argc, argv);
  } catch (const trim::Refusal& refusal) {
    return trim::Fail(refusal.what(), refusal.outcome());
  } catch (const std::bad_alloc&) {
    return trim::Fail(kOutOfMemory, trim::Outcome::kNotSaved);
  } catch (const std::exception& fault) {
    return trim::Fail(fault.what(), trim::Outcome::kNotSaved);
  }
}
