#pragma once

#include "host/clap/ClapApi.h"
#include "host/clap/ClapHostPort.h"
#include "host/clap/ClapParameters.h"

namespace orvantesco {

/// Walks the events of a block in the order of the list. One that stands behind a later one counts
/// at that one's frame: the list's order is what the host means, and nobody sorts on the audio
/// thread. A list that is missing is empty. Audio thread.
class ClapEvents {
 public:
  explicit ClapEvents(const clap_input_events_t* list) noexcept;

  /// Takes off every event that is due at a frame, and gives each to `take(header)`.
  template <class Take>
  void takeUpTo(std::uint32_t frame, Take take) noexcept {
    for (; hasNext() && next->time <= frame; advance()) take(*next);
  }

  /// The rest, whatever frames it names.
  template <class Take>
  void takeAll(Take take) noexcept {
    for (; hasNext(); advance()) take(*next);
  }

  /// The frame of the next event, `end` where there is none before it.
  std::uint32_t nextFrame(std::uint32_t end) const noexcept {
    return hasNext() && next->time < end ? next->time : end;
  }

 private:
  bool hasNext() const noexcept { return next != nullptr; }
  void advance() noexcept;

  const clap_input_events_t* events;
  std::uint32_t count = 0;
  std::uint32_t place = 0;
  const clap_event_header_t* next = nullptr;
};

/// The event behind a header where it is of a type of the standard's own and as long as that type
/// says, else null.
const clap_event_param_value_t* parameterValueIn(const clap_event_header_t& header) noexcept;
const clap_event_transport_t* transportIn(const clap_event_header_t& header) noexcept;

/// Hands what waits to the host's list. What the list refuses waits on. The thread that processes
/// or flushes.
void sendChanges(ClapHostPort& port, const ClapParameters& parameters,
                 const clap_output_events_t* list) noexcept;

}  // namespace orvantesco
