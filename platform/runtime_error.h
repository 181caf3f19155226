#pragma once

#include <exception>
#include <string>
#include <utility>

/// What the user reads when memory has run out.
inline constexpr char kOutOfMemory[] = "Out of memory";

/// A fault with a number, the name of what raised it, and a text for the user. It is the only
/// exception type of this program: what leaves a window's event handler with one ends in a message
/// box, and the program goes on.
class RuntimeError : public std::exception {
 public:
  static constexpr int kInvalidProcedureCall = 5;
  static constexpr int kOverflow = 6;
  static constexpr int kSubscriptOutOfRange = 9;

  RuntimeError(int number, std::string source, std::string description)
      : number_(number), source_(std::move(source)), description_(std::move(description)) {}

  int number() const { return number_; }
  const std::string& source() const { return source_; }
  const std::string& description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  static RuntimeError InvalidProcedureCall(const std::string& source) {
    return {kInvalidProcedureCall, source, "Invalid procedure call or argument"};
  }
  static RuntimeError Overflow(const std::string& source) {
    return {kOverflow, source, "Overflow"};
  }
  static RuntimeError SubscriptOutOfRange(const std::string& source) {
    return {kSubscriptOutOfRange, source, "Subscript out of range"};
  }

 private:
  int number_;
  std::string source_;
  std::string description_;
};
