#include "host/clap/ClapEvents.h"

namespace orvantesco {
namespace {

template <class Event>
const Event* eventIn(const clap_event_header_t& header, std::uint16_t type) noexcept {
  const bool isOne = header.space_id == CLAP_CORE_EVENT_SPACE_ID && header.type == type &&
                     header.size >= sizeof(Event);
  return isOne ? reinterpret_cast<const Event*>(&header) : nullptr;
}

template <class Event>
Event eventFor(int paramIdx, std::uint16_t type, std::uint32_t flags) noexcept {
  Event event{};
  event.header.size = sizeof event;
  event.header.space_id = CLAP_CORE_EVENT_SPACE_ID;
  event.header.type = type;
  event.header.flags = flags;
  event.param_id = static_cast<clap_id>(paramIdx);
  return event;
}

/// Where a parameter stands.
clap_event_param_value_t valueEvent(int paramIdx, double value, std::uint32_t flags) noexcept {
  auto event = eventFor<clap_event_param_value_t>(paramIdx, CLAP_EVENT_PARAM_VALUE, flags);
  event.note_id = event.port_index = event.channel = event.key = -1;
  event.value = value;
  return event;
}

bool send(const HostChange& change, const ClapParameters& parameters,
          const clap_output_events_t& list) noexcept {
  if (change.kind == HostChange::Kind::value) {
    const auto event = valueEvent(change.paramIdx, parameters.valueOf(change), CLAP_EVENT_IS_LIVE);
    return list.try_push(&list, &event.header);
  }
  const bool begins = change.kind == HostChange::Kind::begin;
  const auto event = eventFor<clap_event_param_gesture_t>(
      change.paramIdx, begins ? CLAP_EVENT_PARAM_GESTURE_BEGIN : CLAP_EVENT_PARAM_GESTURE_END,
      CLAP_EVENT_IS_LIVE);
  return list.try_push(&list, &event.header);
}

/// What follows from another parameter is not to be recorded beside it: played back, it would
/// follow again.
bool sendFollowed(int paramIdx, const ClapParameters& parameters,
                  const clap_output_events_t& list) noexcept {
  const double value = parameters.value(static_cast<clap_id>(paramIdx)).value_or(0.0);
  const auto event = valueEvent(paramIdx, value, CLAP_EVENT_DONT_RECORD);
  return list.try_push(&list, &event.header);
}

}  // namespace

ClapEvents::ClapEvents(const clap_input_events_t* list) noexcept : events(list) {
  if (list == nullptr || list->size == nullptr || list->get == nullptr) return;
  count = list->size(list);
  place = static_cast<std::uint32_t>(-1);
  advance();
}

/// A place of the list that holds nothing is passed over.
void ClapEvents::advance() noexcept {
  next = nullptr;
  while (next == nullptr && ++place < count) next = events->get(events, place);
}

const clap_event_param_value_t* parameterValueIn(const clap_event_header_t& header) noexcept {
  return eventIn<clap_event_param_value_t>(header, CLAP_EVENT_PARAM_VALUE);
}

const clap_event_transport_t* transportIn(const clap_event_header_t& header) noexcept {
  return eventIn<clap_event_transport_t>(header, CLAP_EVENT_TRANSPORT);
}

void sendChanges(ClapHostPort& port, const ClapParameters& parameters,
                 const clap_output_events_t* list) noexcept {
  if (list == nullptr || list->try_push == nullptr) return;
  while (const HostChange* const change = port.changes.front()) {
    if (!send(*change, parameters, *list)) return;
    port.changes.pop();
  }
  port.followed.tellEach([&](int paramIdx) { return sendFollowed(paramIdx, parameters, *list); });
}

}  // namespace orvantesco
