#pragma once

#include "platform/platform.h"

/// What a worker's jobs run on: the system for which it was built.
platform::Platform& WorkerSystem();

/// Memory that this program has allocated and not freed, bytes; 0 where it cannot be told.
double HeapInUse();
