#pragma once

/// Messages that several of the main window's concerns show.
namespace main_text {
inline constexpr char kNoSource[] = "Please select the source file first!";
}  // namespace main_text
