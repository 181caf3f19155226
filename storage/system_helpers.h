#pragma once

#include <cstdint>
#include <string>

#include "platform/file_names.h"
#include "platform/registry.h"

/// Small wrappers of system calls that the main window and the CD wizard share.

/// Executable of the packet-writing program without which the wizard does not go on. The main
/// window sets it when it loads.
extern std::string strBurnExeName;
/// Last answer of `GetDiskFreeMB`, megabytes.
extern double dblDiskFreeMB;

/// A string value of the registry, up to its first zero; `strDefault` when it is missing or of
/// another type (expandable strings included). A zero that comes only after 32767 other
/// characters raises an overflow.
std::string RegGetString(platform::Registry& registry, platform::RegistryRoot hKeyRoot,
                         const std::string& strKeyPath, const std::string& strValueName,
                         const std::string& strDefault);

/// Path under which a program, such as "DirectCD.exe", has registered itself for all users; empty
/// when it has not, or with a text too long for a path.
std::string AppPathOf(platform::Registry& registry, const std::string& executable);

/// Free space on the volume of the folder in which `strPath` lies, in megabytes of 1048576 bytes,
/// not rounded; 0 when it cannot be told.
double GetDiskFreeMB(platform::FileNames& names, const std::string& strPath);

/// The unsigned 64-bit number with these two halves.
double LargeIntToDouble(std::int32_t lngLow, std::int32_t lngHigh);
