#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>

namespace orvantesco {

/// What the plug-in tells the host about one of its parameters.
struct HostChange {
  enum class Kind {
    begin,  ///< the user takes hold of the knob
    value,  ///< and moves it
    end,    ///< and lets go
  };
  Kind kind = Kind::value;
  int paramIdx = 0;
  double normalized = 0.0;
};

/// Changes on their way to the host: any number of threads push, one at a time pops. Nobody waits:
/// a full queue refuses. Of the room the last quarter is kept for the ends of gestures, so that a
/// host that does not fetch for a while never believes in a hand that has let go.
///
/// A bounded ring of numbered cells: a cell's number tells whether it is free for the push or ready
/// for the pop of that number (D. Vyukov, bounded MPMC queue).
class ChangeQueue {
 public:
  static constexpr std::size_t capacity = 2048;
  static constexpr std::size_t roomForValues = capacity / 4 * 3;

  ChangeQueue() : cells(std::make_unique<std::array<Cell, capacity>>()) {
    for (std::size_t i = 0; i < capacity; ++i) (*cells)[i].number.store(i);
  }

  /// False where there is no room. Any thread.
  bool push(const HostChange& change) noexcept {
    std::size_t place = pushed.load(std::memory_order_relaxed);
    for (;;) {
      if (!hasRoomFor(change, place)) return false;
      Cell& cell = cellOf(place);
      const std::size_t number = cell.number.load(std::memory_order_acquire);
      if (number < place) return false;
      if (number > place) {
        place = pushed.load(std::memory_order_relaxed);
      } else if (pushed.compare_exchange_weak(place, place + 1, std::memory_order_relaxed)) {
        cell.change = change;
        cell.number.store(place + 1, std::memory_order_release);
        return true;
      }
    }
  }

  /// The change that has waited longest, null for none. The thread that pops.
  const HostChange* front() const noexcept {
    const std::size_t place = popped.load(std::memory_order_relaxed);
    const Cell& cell = cellOf(place);
    return cell.number.load(std::memory_order_acquire) == place + 1 ? &cell.change : nullptr;
  }

  /// Takes off what `front` shows. The thread that pops.
  void pop() noexcept {
    const std::size_t place = popped.load(std::memory_order_relaxed);
    cellOf(place).number.store(place + capacity, std::memory_order_release);
    popped.store(place + 1, std::memory_order_relaxed);
  }

 private:
  struct Cell {
    std::atomic<std::size_t> number{0};
    HostChange change;
  };

  bool hasRoomFor(const HostChange& change, std::size_t place) const noexcept {
    // Below 0 where `place` is out of date: the push then finds its cell taken and looks again.
    const auto waiting =
        static_cast<std::ptrdiff_t>(place - popped.load(std::memory_order_relaxed));
    return change.kind == HostChange::Kind::end ||
           waiting < static_cast<std::ptrdiff_t>(roomForValues);
  }

  Cell& cellOf(std::size_t place) const noexcept { return (*cells)[place % capacity]; }

  std::unique_ptr<std::array<Cell, capacity>> cells;
  std::atomic<std::size_t> pushed{0};
  std::atomic<std::size_t> popped{0};
};

}  // namespace orvantesco
