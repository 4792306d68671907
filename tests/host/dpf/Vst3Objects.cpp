#include "host/dpf/Vst3Objects.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvantesco {

v3_result V3_API vst3NoInterface(void*, const v3_tuid, void** object) {
  *object = nullptr;
  return V3_NO_INTERFACE;
}

std::uint32_t V3_API vst3One(void*) { return 1; }

Vst3Stream::Vst3Stream(std::string text, std::vector<std::int32_t> atOnce)
    : table(&tableOfAll()), content(std::move(text)), lengths(std::move(atOnce)) {}

v3_bstream** Vst3Stream::handle() { return static_cast<v3_bstream**>(static_cast<void*>(this)); }

const Vst3Stream::Table& Vst3Stream::tableOfAll() {
  static const Table table = [] {
    auto made = vst3Uncounted<Table>();
    made.stream.read = read;
    made.stream.write = write;
    return made;
  }();
  return table;
}

std::int32_t Vst3Stream::nextLength() { return lengths[calls++ % lengths.size()]; }

v3_result V3_API Vst3Stream::read(void* self, void* buffer, std::int32_t wanted,
                                  std::int32_t* got) {
  auto& stream = *static_cast<Vst3Stream*>(self);
  const auto left = static_cast<std::int32_t>(stream.content.size() - stream.position);
  *got = std::min({wanted, left, stream.nextLength()});
  std::memcpy(buffer, stream.content.data() + stream.position, static_cast<std::size_t>(*got));
  stream.position += static_cast<std::size_t>(*got);
  return V3_OK;
}

v3_result V3_API Vst3Stream::write(void* self, void* buffer, std::int32_t wanted,
                                   std::int32_t* got) {
  auto& stream = *static_cast<Vst3Stream*>(self);
  *got = std::min(wanted, stream.nextLength());
  stream.content.append(static_cast<const char*>(buffer), static_cast<std::size_t>(*got));
  return V3_OK;
}

const v3_param_value_queue_cpp& Vst3ChangeLists::Points::tableOfAll() {
  static const auto table = [] {
    auto made = vst3Uncounted<v3_param_value_queue_cpp>();
    made.queue = {idOf, count, get, add};
    return made;
  }();
  return table;
}

v3_param_id V3_API Vst3ChangeLists::Points::idOf(void* self) {
  return static_cast<Points*>(self)->id;
}

std::int32_t V3_API Vst3ChangeLists::Points::count(void* self) {
  return static_cast<std::int32_t>(static_cast<Points*>(self)->changes.size());
}

v3_result V3_API Vst3ChangeLists::Points::get(void* self, std::int32_t index, std::int32_t* frame,
                                              double* value) {
  const auto& changes = static_cast<Points*>(self)->changes;
  if (index < 0 || index >= count(self)) return V3_INVALID_ARG;
  const Vst3Change& change = changes[static_cast<std::size_t>(index)];
  *frame = change.frame;
  *value = change.normalized;
  return V3_OK;
}

v3_result V3_API Vst3ChangeLists::Points::add(void* self, std::int32_t frame, double value,
                                              std::int32_t* index) {
  auto& points = *static_cast<Points*>(self);
  *index = count(self);
  points.changes.push_back({points.id, frame, value});
  return V3_OK;
}

v3_param_value_queue** Vst3ChangeLists::Points::handle() {
  return static_cast<v3_param_value_queue**>(static_cast<void*>(this));
}

Vst3ChangeLists::Vst3ChangeLists(const std::vector<Vst3Change>& changes) : table(&tableOfAll()) {
  for (const Vst3Change& change : changes) pointsOf(change.id).changes.push_back(change);
}

v3_param_changes** Vst3ChangeLists::handle() {
  return static_cast<v3_param_changes**>(static_cast<void*>(this));
}

std::vector<Vst3Change> Vst3ChangeLists::all() const {
  std::vector<Vst3Change> changes;
  for (const Points& points : lists) {
    changes.insert(changes.end(), points.changes.begin(), points.changes.end());
  }
  return changes;
}

const v3_param_changes_cpp& Vst3ChangeLists::tableOfAll() {
  static const auto table = [] {
    auto made = vst3Uncounted<v3_param_changes_cpp>();
    made.changes = {count, get, add};
    return made;
  }();
  return table;
}

std::int32_t V3_API Vst3ChangeLists::count(void* self) {
  return static_cast<std::int32_t>(static_cast<Vst3ChangeLists*>(self)->lists.size());
}

v3_param_value_queue** V3_API Vst3ChangeLists::get(void* self, std::int32_t index) {
  return static_cast<Vst3ChangeLists*>(self)->lists[static_cast<std::size_t>(index)].handle();
}

v3_param_value_queue** V3_API Vst3ChangeLists::add(void* self, v3_param_id* id,
                                                   std::int32_t* index) {
  auto& changes = *static_cast<Vst3ChangeLists*>(self);
  Points& points = changes.pointsOf(*id);
  *index = count(self) - 1;
  return points.handle();
}

Vst3ChangeLists::Points& Vst3ChangeLists::pointsOf(v3_param_id id) {
  const auto known = std::ranges::find(lists, id, &Points::id);
  if (known != lists.end()) return *known;
  lists.push_back({&Points::tableOfAll(), id, {}});
  return lists.back();
}

}  // namespace orvantesco
