#include <malloc.h>

#include "benchmarks/worker_system.h"
#include "platform/posix/posix_disk.h"
#include "platform/steady_clock.h"
#include "tests/support/fake_dates.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/memory_disk.h"

platform::Platform& WorkerSystem() {
  static PosixDisk disk;
  static MemoryDisk drives;
  static FakeRegistry registry;
  static FakeDesktop desktop;
  static FakeDates dates;
  static platform::SteadyClock clock;
  static platform::Platform system{disk,  disk,  registry, desktop,    drives,
                                   dates, clock, "",       "Trimbrook"};
  return system;
}

double HeapInUse() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}
