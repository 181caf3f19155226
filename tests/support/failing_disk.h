#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"
#include "tests/support/figure.h"
#include "tests/support/memory_disk.h"

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

/// A disk on which one fault strikes. A close that fails has closed the file all the same.
class FailingDisk : public platform::Files, public platform::FileNames, public platform::Drives {
 public:
  FailingDisk(MemoryDisk& disk, Fault& fault) : disk_(disk), fault_(fault) {}

  platform::FileHandle Open(const std::string& path, platform::OpenMode mode) override {
    return Fails("open") ? platform::FileHandle::kInvalid : disk_.Open(path, mode);
  }
  bool Read(platform::FileHandle file, void* buffer, std::uint32_t bytes,
            std::uint32_t& bytesRead) override {
    bytesRead = 0;
    return !Fails("read") && disk_.Read(file, buffer, Moved("read", bytes), bytesRead);
  }
  bool Write(platform::FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override {
    bytesWritten = 0;
    return !Fails("write") && disk_.Write(file, buffer, Moved("write", bytes), bytesWritten);
  }
  bool Seek(platform::FileHandle file, std::int64_t position) override {
    return !Fails("seek") && disk_.Seek(file, position);
  }
  std::optional<std::uint64_t> Size(platform::FileHandle file) override {
    return Fails("size") ? std::nullopt : disk_.Size(file);
  }
  bool Flush(platform::FileHandle file) override { return !Fails("flush") && disk_.Flush(file); }
  bool Close(platform::FileHandle file) override {
    const bool closed = disk_.Close(file);
    return !Fails("close") && closed;
  }
  std::optional<platform::FileIdentity> Identity(platform::FileHandle file) override {
    return Fails("identity") ? std::nullopt : disk_.Identity(file);
  }

  bool Find(const std::string& path) override { return !Fails("find") && disk_.Find(path); }
  bool Remove(const std::string& path) override { return !Fails("remove") && disk_.Remove(path); }
  std::string MakeTemporary(const std::string& folder, const std::string& prefix) override {
    return Fails("temporary name") ? "" : disk_.MakeTemporary(folder, prefix);
  }
  bool SetTemporary(const std::string& path, bool temporary) override {
    return !Fails("attribute") && disk_.SetTemporary(path, temporary);
  }
  bool Move(const std::string& from, const std::string& to) override {
    return !Fails("move") && disk_.Move(from, to);
  }
  std::uint64_t FreeBytes(const std::string& root) override {
    return Fails("free bytes") ? 0 : disk_.FreeBytes(root);
  }

  std::vector<std::string> CdRomDrives() override { return disk_.CdRomDrives(); }
  bool HasFile(const std::string& path) override {
    return !Fails("has file") && disk_.HasFile(path);
  }
  bool HasFolder(const std::string& path) override {
    return !Fails("has folder") && disk_.HasFolder(path);
  }
  std::optional<std::uint64_t> FileBytes(const std::string& path) override {
    return Fails("file bytes") ? std::nullopt : disk_.FileBytes(path);
  }
  bool MakeFolder(const std::string& path) override {
    return !Fails("make folder") && disk_.MakeFolder(path);
  }
  bool RemoveFolder(const std::string& path) override {
    return !Fails("remove folder") && disk_.RemoveFolder(path);
  }
  bool RemoveFilesIn(const std::string& folder) override {
    return !Fails("remove files") && disk_.RemoveFilesIn(folder);
  }
  std::vector<std::string> FilesBelow(const std::string& folder) override {
    return disk_.FilesBelow(folder);
  }

 private:
  bool Fails(const char* operation) { return fault_.Strikes(operation); }
  /// How many of the bytes a read or write moves.
  std::uint32_t Moved(const char* operation, std::uint32_t bytes) {
    return fault_.Strikes(operation, Fault::Kind::kShortTransfer) ? bytes / 2 : bytes;
  }

  MemoryDisk& disk_;
  Fault& fault_;
};

/// Runs `job(fault)` with every call of the disk failing in turn, once and for good, with an error
/// and with a short transfer, until a run has met no fault any more. The job makes its own
/// `MemoryDisk`, puts a `FailingDisk` with the fault over it, and checks its promises at the end.
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
