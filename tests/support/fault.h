#pragma once

#include <ostream>
#include <string>

#include "platform/failure.h"
#include "tests/support/figure.h"

/// One fault of the disk: the `call`-th call fails (from 1), once or every such call from then on.
struct Fault {
  enum class Kind {
    kError,          ///< The call fails.
    kShortTransfer,  ///< A read or write says that it succeeded, with half of the bytes.
  };
  static constexpr int kNever = -1;

  int call = kNever;
  bool lasting = false;
  Kind kind = Kind::kError;
  platform::Failure reason = {};  ///< That an error tells.
  std::string met;  ///< The operation that the fault has struck; empty while it has struck none.

  /// Counts a call of `operation` that can fail so, and tells whether it does.
  bool Strikes(const char* operation, Kind how = Kind::kError) {
    if (kind != how) return false;
    ++calls_;
    if (calls_ == call) met = operation;
    return calls_ == call || (lasting && met == operation);
  }

 private:
  int calls_ = 0;
};

inline std::ostream& operator<<(std::ostream& out, const Fault& fault) {
  return out << (fault.kind == Fault::Kind::kError ? "error" : "short transfer") << " in call "
             << fault.call << " (" << fault.met << (fault.lasting ? ", for good)" : ", once)");
}

/// Runs `job(fault)` with every call of the disk failing in turn, once and for good, with an error
/// and with a short transfer, until a run has met no fault any more. The job gives the fault to a
/// `MemoryDisk` of its own, takes it back from there, and checks its promises.
/// Tests that do so have "WhateverCallFails" in their names, by which `./attack` finds them.
template <typename Job>
void ForEachFault(Job job) {
  int tried = 0;
  for (const Fault::Kind kind : {Fault::Kind::kError, Fault::Kind::kShortTransfer})
    for (const bool lasting : {false, true})
      for (int call = 1;; ++call) {
        Fault fault;
        fault.call = call;
        fault.lasting = lasting;
        fault.kind = kind;
        job(fault);
        if (fault.met.empty()) break;
        ++tried;
      }
  PrintFigure(tried, "faults tried");
}
