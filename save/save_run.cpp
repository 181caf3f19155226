#include <exception>
#include <new>

#include "platform/runtime_error.h"
#include "save/operations.h"

namespace {

SaveResult Run(platform::Core& system, SaveProgress& progress, const SaveJob& job) {
  switch (job.mode) {
    case SaveJob::Mode::kWholeBlocks:
      return SaveBlockRange(system, progress, job);
    case SaveJob::Mode::kChosenCameras:
      return SaveChosenCameras(system, progress, job);
  }
  return {};
}

}  // namespace

SaveResult RunSave(platform::Core& system, SaveProgress& progress, const SaveJob& job) {
  // Whatever leaves a save has closed its files and removed its own on the way. It must not pass:
  // the window would look busy for ever.
  try {
    return Run(system, progress, job);
  } catch (const std::bad_alloc&) {
    return {.end = SaveEnd::kFault, .detail = kOutOfMemory};
  } catch (const std::exception& fault) {
    return {.end = SaveEnd::kFault, .detail = fault.what()};
  }
}
