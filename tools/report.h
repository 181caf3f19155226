#pragma once

#include <set>
#include <string>

#include "tools/comparison.h"
#include "tools/recording_reader.h"

namespace tools {

/// What a recording holds, and in which state it is.
struct Report {
  FileFacts file;
  bool is20D = false;
  int blocks = 0;
  std::set<std::string> types;  ///< Of the blocks.
  Times times;                  ///< From the first good block's start to the last one's end.
  Contents contents;
  std::int64_t rest = 0;  ///< Bytes behind the last block.

  /// Adds a block to what has been seen.
  void Add(const StoredBlock& block);
  /// "whole" or "damaged: " and what.
  std::string Verdict() const;
  bool IsWhole() const { return Verdict() == "whole"; }
};

/// Reads a whole recording, with a bar where a person looks on. Throws `std::runtime_error` when no
/// block of it can be read.
Report Examine(const std::string& path, bool withSum);

/// A report as lines for a person, and as one line of JSON for a program.
std::string Text(const Report& report);
std::string Json(const Report& report);
std::string Text(const Comparison& comparison);
std::string Json(const Comparison& comparison);

}  // namespace tools
