#pragma once

#include <deque>
#include <string>
#include <vector>

#include "host/dpf/Vst3Change.h"
#include "src/travesty/bstream.h"

namespace orvantesco {

// What a VST3 host hands over, as objects of the format: each is a pointer to a table of functions,
// and what it holds stands behind that pointer. None of ours is counted.

v3_result V3_API vst3NoInterface(void* self, const v3_tuid id, void** object);
std::uint32_t V3_API vst3One(void* self);

/// A table whose objects offer nothing else and live as long as their owner wants.
template <class Table>
Table vst3Uncounted() {
  Table table{};
  table.query_interface = vst3NoInterface;
  table.ref = vst3One;
  table.unref = vst3One;
  return table;
}

/// A stream over a text. Its calls move at most as many bytes as `atOnce` says, in turn.
class Vst3Stream {
 public:
  Vst3Stream(std::string text, std::vector<std::int32_t> atOnce);
  Vst3Stream(const Vst3Stream&) = delete;
  Vst3Stream& operator=(const Vst3Stream&) = delete;

  v3_bstream** handle();
  const std::string& bytes() const { return content; }

 private:
  struct Table : v3_funknown {
    v3_bstream stream;
  };
  static const Table& tableOfAll();
  static v3_result V3_API read(void* self, void* buffer, std::int32_t wanted, std::int32_t* got);
  static v3_result V3_API write(void* self, void* buffer, std::int32_t wanted, std::int32_t* got);
  std::int32_t nextLength();

  const Table* table = nullptr;  // first, as the format wants it
  std::string content;
  std::size_t position = 0;
  std::vector<std::int32_t> lengths;
  std::size_t calls = 0;
};

/// The changes of a block: a list of points for each parameter, in the order in which they come.
class Vst3ChangeLists {
 public:
  explicit Vst3ChangeLists(const std::vector<Vst3Change>& changes);
  Vst3ChangeLists(const Vst3ChangeLists&) = delete;
  Vst3ChangeLists& operator=(const Vst3ChangeLists&) = delete;

  v3_param_changes** handle();
  std::vector<Vst3Change> all() const;

 private:
  struct Points {
    const v3_param_value_queue_cpp* table = nullptr;
    v3_param_id id = 0;
    std::vector<Vst3Change> changes;

    static const v3_param_value_queue_cpp& tableOfAll();
    static v3_param_id V3_API idOf(void* self);
    static std::int32_t V3_API count(void* self);
    static v3_result V3_API get(void* self, std::int32_t index, std::int32_t* frame, double* value);
    static v3_result V3_API add(void* self, std::int32_t frame, double value, std::int32_t* index);
    v3_param_value_queue** handle();
  };

  static const v3_param_changes_cpp& tableOfAll();
  static std::int32_t V3_API count(void* self);
  static v3_param_value_queue** V3_API get(void* self, std::int32_t index);
  static v3_param_value_queue** V3_API add(void* self, v3_param_id* id, std::int32_t* index);
  Points& pointsOf(v3_param_id id);

  const v3_param_changes_cpp* table = nullptr;  // first, as the format wants it
  std::deque<Points> lists;                     // handles point into it
};

}  // namespace orvantesco
