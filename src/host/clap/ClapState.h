#pragma once

#include "core/Orvantesco.h"
#include "host/clap/ClapApi.h"
#include "host/clap/ClapParameters.h"

namespace orvantesco {

/// Reading and writing what a session keeps: the effect's state block, byte by byte as every format
/// writes it, and behind it what belongs to this format alone, the bypass. A block without it has
/// none. Streams may take and give as few bytes at a time as they like.
///
/// Main thread; audio may run and is silent while a state is taken.
class ClapState {
 public:
  ClapState(Orvantesco& owner, ClapParameters& hostParameters) noexcept
      : effect(owner), parameters(hostParameters) {}

  /// False where the stream refuses or memory ends.
  bool save(const clap_ostream_t& stream) const;

  /// False, with everything as it was, where the stream fails or holds no state that this version
  /// can read to its end.
  bool load(const clap_istream_t& stream);

 private:
  Orvantesco& effect;
  ClapParameters& parameters;
};

}  // namespace orvantesco
