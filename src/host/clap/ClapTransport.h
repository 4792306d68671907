#pragma once

#include "host/HostTimeInfo.h"
#include "host/clap/ClapApi.h"

namespace orvantesco {

/// A position in beats or seconds as CLAP carries it, a multiple of 2^-31.
double ofFixedPoint(std::int64_t position) noexcept;

/// The position, rounded to what CLAP can carry.
double roundedToFixedPoint(double position) noexcept;

/// The transport as a host told it for one frame of a block, and what follows from it for the
/// frames behind. Audio thread.
class ClapTransport {
 public:
  /// What the host says of a frame of the current block; null stands for a host that runs free:
  /// the transport stands still and the tempo stays the one of before.
  void take(const clap_event_transport_t* event, int frame) noexcept;

  /// Beats per minute at a frame, 0 where the host names none.
  double tempoAt(int frame) const noexcept { return tempo + tempoIncrement * (frame - eventFrame); }

  /// The transport at a frame, at a rate in Hz. Positions are those that CLAP could have carried:
  /// they do not depend on more than the last word of the host. What the host does not tell is 0;
  /// a tempo of 0 counts as none.
  HostTimeInfo at(int frame, double rateHz) const noexcept {
    HostTimeInfo time;
    writeAt(frame, rateHz, time);
    return time;
  }
  /// The same where a sub-block asks, into what it has.
  void writeAt(int frame, double rateHz, HostTimeInfo& time) const noexcept;

 private:
  double beatsSince(int frames, double rateHz) const noexcept;

  double tempo = 0.0;           ///< beats per minute at that frame, 0 for none
  double tempoIncrement = 0.0;  ///< beats per minute a frame
  int eventFrame = 0;
  HostTimeInfo told;     ///< at that frame, as far as it needs no rate
  double seconds = 0.0;  ///< since the start of the song, at that frame
};

}  // namespace orvantesco
