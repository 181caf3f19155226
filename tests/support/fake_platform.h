#pragma once

#include "platform/platform.h"
#include "tests/support/fake_clock.h"
#include "tests/support/fake_dates.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/memory_disk.h"

/// The whole outside world of a test, with the program's own file on its disk. A test may bring a
/// kind of disk of its own.
template <typename Disk>
struct PlatformWith {
  PlatformWith() { disk.Put("C:\\Trimbrook\\Trimbrook.exe", ""); }

  Disk disk;
  FakeRegistry registry;
  FakeDesktop desktop;
  FakeDates dates;
  FakeClock clock;
  platform::Platform system{disk,  disk,  registry,        desktop,    disk,
                            dates, clock, "C:\\Trimbrook", "Trimbrook"};
};

using FakePlatform = PlatformWith<MemoryDisk>;
