#pragma once

#include "platform/platform.h"
#include "tests/support/failing_disk.h"
#include "tests/support/fake_dates.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/memory_disk.h"

/// The whole outside world of a test. `system` goes through the fault, which strikes nothing unless
/// a test sets it; `disk` is behind it.
struct FakePlatform {
  explicit FakePlatform(const Fault& whatFails = {}) : fault(whatFails) {
    disk.Put("C:\\Trimbrook\\Trimbrook.exe", "");
  }

  Fault fault;
  MemoryDisk disk;
  FailingDisk failing{disk, fault};
  FakeRegistry registry;
  FakeDesktop desktop;
  FakeDates dates;
  platform::Platform system{failing, failing, registry,        desktop,
                            failing, dates,   "C:\\Trimbrook", "Trimbrook"};
};
