#pragma once

#include <cstdint>
#include <vector>

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// The events that a host sends with a block, in the order in which they were added.
class ClapInput {
 public:
  ClapInput() {
    list.ctx = this;
    list.size = [](const clap_input_events_t* of) { return self(of).count(); };
    list.get = [](const clap_input_events_t* of, std::uint32_t place) {
      return self(of).at(place);
    };
  }
  ClapInput(const ClapInput&) = delete;
  ClapInput& operator=(const ClapInput&) = delete;

  const clap_input_events_t* handle() const { return &list; }
  void clear() { events.clear(); }

  void value(std::uint32_t frame, clap_id id, double number) {
    Event& event = events.emplace_back();
    event.value.header = header(sizeof event.value, frame, CLAP_EVENT_PARAM_VALUE);
    event.value.param_id = id;
    event.value.note_id = event.value.port_index = event.value.channel = event.value.key = -1;
    event.value.value = number;
  }

  void transport(std::uint32_t frame, const clap_event_transport_t& what) {
    Event& event = events.emplace_back();
    event.isTransport = true;
    event.transport = what;
    event.transport.header = header(sizeof event.transport, frame, CLAP_EVENT_TRANSPORT);
  }

  /// The header of the event that was added last, to spoil it.
  clap_event_header_t& last() { return events.back().header(); }

 private:
  struct Event {
    bool isTransport = false;
    clap_event_param_value_t value{};
    clap_event_transport_t transport{};
    clap_event_header_t& header() { return isTransport ? transport.header : value.header; }
  };

  static ClapInput& self(const clap_input_events_t* of) {
    return *static_cast<ClapInput*>(of->ctx);
  }
  static clap_event_header_t header(std::size_t size, std::uint32_t frame, std::uint16_t type) {
    return {static_cast<std::uint32_t>(size), frame, CLAP_CORE_EVENT_SPACE_ID, type, 0};
  }
  std::uint32_t count() const { return static_cast<std::uint32_t>(events.size()); }
  const clap_event_header_t* at(std::uint32_t place) { return &events.at(place).header(); }

  clap_input_events_t list{};
  std::vector<Event> events;
};

/// What the plug-in sends back. It takes no more than `room` events.
class ClapOutput {
 public:
  struct Told {
    std::uint16_t type = 0;
    std::uint32_t flags = 0;
    clap_id id = 0;
    double value = 0.0;
  };

  ClapOutput() {
    list.ctx = this;
    list.try_push = [](const clap_output_events_t* of, const clap_event_header_t* event) {
      return static_cast<ClapOutput*>(of->ctx)->take(*event);
    };
    told.reserve(room);
  }
  ClapOutput(const ClapOutput&) = delete;
  ClapOutput& operator=(const ClapOutput&) = delete;

  const clap_output_events_t* handle() const { return &list; }

  std::size_t room = 4096;
  std::vector<Told> told;

 private:
  bool take(const clap_event_header_t& header) {
    if (told.size() >= room) return false;
    Told event{header.type, header.flags, 0, 0.0};
    if (header.type == CLAP_EVENT_PARAM_VALUE) {
      const auto& value = reinterpret_cast<const clap_event_param_value_t&>(header);
      event.id = value.param_id;
      event.value = value.value;
    } else {
      event.id = reinterpret_cast<const clap_event_param_gesture_t&>(header).param_id;
    }
    told.push_back(event);
    return true;
  }

  clap_output_events_t list{};
};

}  // namespace orvantesco
