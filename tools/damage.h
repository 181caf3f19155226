#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/bytes.h"
#include "tools/layout.h"

namespace tools {

/// A block that is about to be damaged.
struct Victim {
  const Layout& layout;
  std::uint8_t* block;
  Random& random;

  std::uint8_t* Trailer() { return block + layout.trailer; }
  std::uint8_t* Entry(int index) { return layout.Entry(Trailer(), index); }
  /// The count that the trailer holds, at most what it has room for.
  int ImageCount();
};

/// A kind of damage by its name.
struct DamageKind {
  std::string name;
  std::string help;
  std::function<void(Victim&)> apply;
};

/// All kinds, in the order of the help.
const std::vector<DamageKind>& DamageKinds();

/// A kind and the block it befalls, from 1 on; 0 befalls every block.
struct Damage {
  const DamageKind* kind;
  int block;
};

/// Reads "KIND" or "KIND@BLOCK"; throws `std::invalid_argument` for an unknown kind.
Damage ParseDamage(const std::string& text);

}  // namespace tools
