#include "benchmarks/worker_system.h"

#include "platform/windows/windows_platform.h"

platform::Platform& WorkerSystem() {
  static platform::WindowsPlatform system;
  return system.bundle();
}

// The tables are the same as in the native build, which can tell.
double HeapInUse() {
  return 0;
}
