#include "tests/windows/holdings.h"

#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace driver {
namespace {

// Wine answers the usual functions for drawing objects with 0, and that for handles with the room
// that they have, but fills the tables behind them.

/// The list of all handles of the system: SystemExtendedHandleInformation.
struct HandleList {
  static constexpr int kClass = 64;
  struct Entry {
    void* object;
    ULONG_PTR process, value;
    ULONG access;
    USHORT trace, type;
    ULONG attributes, reserved;
  };
  ULONG_PTR count, reserved;
  Entry entries[16'000];
};

std::int64_t Handles(DWORD process) {
  const auto list = std::make_unique<HandleList>();
  if (NtQuerySystemInformation(static_cast<SYSTEM_INFORMATION_CLASS>(HandleList::kClass),
                               list.get(), sizeof *list, nullptr) != 0)
    throw std::runtime_error("No list of handles");
  return std::count_if(list->entries, list->entries + list->count,
                       [process](const auto& entry) { return entry.process == process; });
}

/// An entry of the table of drawing objects that each process has mapped.
struct DrawingObject {
  std::uint64_t object;
  std::uint16_t owner, generation, type, flags;
  std::uint64_t user;
};

std::int64_t DrawingObjects(HANDLE process) {
  constexpr std::size_t kTableInProcessBlock = 0xF8;
  constexpr std::size_t kMost = 65536;
  PROCESS_BASIC_INFORMATION basic = {};
  NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
  const char* table = nullptr;
  std::vector<DrawingObject> objects(kMost);
  if (!ReadProcessMemory(process,
                         reinterpret_cast<char*>(basic.PebBaseAddress) + kTableInProcessBlock,
                         &table, sizeof table, nullptr) ||
      !ReadProcessMemory(process, table, objects.data(), kMost * sizeof(DrawingObject), nullptr))
    throw std::runtime_error("No table of drawing objects");
  return std::ranges::count_if(objects, [](const auto& object) { return object.type != 0; });
}

std::int64_t Windows(DWORD process) {
  std::int64_t count = 0;
  for (const Window& window : WindowsOf(process))
    count += 1 + static_cast<std::int64_t>(window.Controls().size());
  return count;
}

std::int64_t Kilobytes(HANDLE process) {
  PROCESS_MEMORY_COUNTERS memory = {};
  GetProcessMemoryInfo(process, &memory, sizeof memory);
  return static_cast<std::int64_t>(memory.PagefileUsage / 1024);
}

}  // namespace

std::map<std::string, std::int64_t> HoldingsOf(const Program& program) {
  const DWORD process = GetProcessId(program.process());
  return {{"handles", Handles(process)},
          {"drawing objects", DrawingObjects(program.process())},
          {"windows", Windows(process)},
          {"KB", Kilobytes(program.process())}};
}

}  // namespace driver
