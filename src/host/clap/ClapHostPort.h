#pragma once

#include <atomic>
#include <thread>

#include "fx/Shared.h"
#include "host/HostPort.h"
#include "host/clap/ChangeQueue.h"
#include "host/clap/ClapHost.h"
#include "host/clap/ClapTransport.h"
#include "host/clap/FollowedSet.h"
#include "host/clap/GestureCount.h"

namespace orvantesco {

/// What a CLAP host gives the effect and takes from it. What the effect tells on threads of its own
/// waits here until the host comes to fetch it.
class ClapHostPort : public HostPort {
 public:
  explicit ClapHostPort(const ClapHost& clapHost) : host(clapHost) {}
  ClapHostPort(const ClapHostPort&) = delete;
  ClapHostPort& operator=(const ClapHostPort&) = delete;

  /// Hz; 0 before the host has named one. Main thread, while no audio runs.
  void setSampleRate(double rateHz) noexcept { rate = rateHz; }

  /// A part of a block begins at a frame; the tempo is asked for there. Audio thread.
  void beginPart(int frameInBlock) noexcept { partStart = frameInBlock; }
  /// The host tells its transport at a frame of the block, null for none. Audio thread.
  void takeTransport(const clap_event_transport_t* event, int frame) noexcept {
    transport.take(event, frame);
  }

  double sampleRate() const noexcept override { return rate; }
  double tempo() const noexcept override { return transport.tempoAt(partStart); }
  void transportAt(int frameInBlock, HostTimeInfo& info) const noexcept override {
    transport.writeAt(frameInBlock, rate, info);
  }
  void latencyChanged(int samples) noexcept override;
  void beginParamChange(int paramIdx) override;
  void informParamChange(int paramIdx, double normalized) override;
  void endParamChange(int paramIdx) override;

  /// The engine has moved a parameter as a consequence of another. Any thread.
  void followParamChange(int paramIdx) noexcept;

  /// What the thread that processes or flushes fetches for the host: a person's changes in their
  /// order, and behind them what follows.
  ChangeQueue changes;
  FollowedSet followed;

  /// Whether any of it waits. The thread that fetches.
  bool hasNews() const noexcept { return changes.front() != nullptr || !followed.isEmpty(); }

  /// Marks the calling thread as the one in the host's hands, which fetches the changes itself and
  /// needs no request to do so.
  class Visit {
   public:
    explicit Visit(ClapHostPort& owner) noexcept : port(owner) {
      port.visitor.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }
    ~Visit() { port.visitor.store({}, std::memory_order_relaxed); }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

   private:
    ClapHostPort& port;
  };

  /// While it lives the host may be told of another latency at once; at any other time that takes
  /// a restart. Main thread.
  class LatencyWindow {
   public:
    explicit LatencyWindow(ClapHostPort& owner) noexcept : port(owner), before(owner.latency) {
      port.latencyMayChange = true;
    }
    ~LatencyWindow() { port.latencyMayChange = false; }
    LatencyWindow(const LatencyWindow&) = delete;
    LatencyWindow& operator=(const LatencyWindow&) = delete;

    bool sawChange() const noexcept { return port.latency != before; }

   private:
    ClapHostPort& port;
    int before;
  };

  // ---- work that only the main thread may do ----

  enum Duty : unsigned {
    kRescanValues = 1u << 0,  ///< values moved that the queue had no room for
    kRescanTexts = 1u << 1,   ///< names or texts of parameters changed
    kBuildEffects = 1u << 2,  ///< effects were chosen by a person
  };
  /// Any thread.
  void postDuty(unsigned bits) noexcept;
  /// Main thread.
  unsigned takeDuties() noexcept { return duties.exchange(0, std::memory_order_relaxed); }

 private:
  bool push(const HostChange& change) noexcept;
  void askToFetch() const noexcept;

  const ClapHost& host;
  Shared<double> rate{0.0};
  ClapTransport transport;
  GestureCount gestures;
  int partStart = 0;
  Shared<int> latency{0};
  Shared<bool> latencyMayChange{false};
  std::atomic<std::thread::id> visitor{};
  std::atomic<unsigned> duties{0};
};

}  // namespace orvantesco
