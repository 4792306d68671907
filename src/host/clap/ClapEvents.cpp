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
Event eventFor(const HostChange& change, std::uint16_t type) noexcept {
  Event event{};
  event.header.size = sizeof event;
  event.header.space_id = CLAP_CORE_EVENT_SPACE_ID;
  event.header.type = type;
  event.param_id = static_cast<clap_id>(change.paramIdx);
  return event;
}

bool sendGesture(const HostChange& change, const clap_output_events_t& list) noexcept {
  const bool begins = change.kind == HostChange::Kind::begin;
  auto event = eventFor<clap_event_param_gesture_t>(
      change, begins ? CLAP_EVENT_PARAM_GESTURE_BEGIN : CLAP_EVENT_PARAM_GESTURE_END);
  event.header.flags = CLAP_EVENT_IS_LIVE;
  return list.try_push(&list, &event.header);
}

/// What follows from another parameter is not to be recorded beside it: played back, it would
/// follow again.
bool sendValue(const HostChange& change, const ClapParameters& parameters,
               const clap_output_events_t& list) noexcept {
  auto event = eventFor<clap_event_param_value_t>(change, CLAP_EVENT_PARAM_VALUE);
  const bool follows = change.kind == HostChange::Kind::follow;
  event.header.flags = follows ? CLAP_EVENT_DONT_RECORD : CLAP_EVENT_IS_LIVE;
  event.note_id = event.port_index = event.channel = event.key = -1;
  event.value = parameters.valueOf(change);
  return list.try_push(&list, &event.header);
}

bool send(const HostChange& change, const ClapParameters& parameters,
          const clap_output_events_t& list) noexcept {
  const bool isGesture =
      change.kind == HostChange::Kind::begin || change.kind == HostChange::Kind::end;
  return isGesture ? sendGesture(change, list) : sendValue(change, parameters, list);
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

bool sendChanges(ChangeQueue& changes, const ClapParameters& parameters,
                 const clap_output_events_t* list) noexcept {
  const bool any = changes.front() != nullptr;
  if (list == nullptr || list->try_push == nullptr) return any;
  while (const HostChange* const change = changes.front()) {
    if (!send(*change, parameters, *list)) break;
    changes.pop();
  }
  return any;
}

}  // namespace orvantesco
