#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/Requests.h"
#include "fx/DSPShell.h"
#include "fx/Shared.h"
#include "fx/Smoother.h"

namespace orvantesco {

inline constexpr int kEffectParams = 5;
inline constexpr int kEffectPositions = 12;
inline constexpr int kStagePR = 0, kStageFB = 1,
                     kStagePO = 2;  ///< before, within, behind the delay
inline constexpr int kEffectStages = 3;

/// Index of the position of a slot (0..3) and a stage: slots run fastest.
constexpr int effectPositionIndex(int slot, int stage) { return stage * 4 + slot; }

/// The instances of one effect type at one position: a left and a right one at PR and FB, a pair
/// for each of the sixteen taps at PO. Built and freed by control threads, run by the audio thread.
struct EffectInstances {
  int typeId = 0;
  double builtAtRate = 0.0;  ///< clamped sample rate that the instances were built for
  std::vector<std::shared_ptr<DSPShell>> list;
  EffectInstances* nextRetired = nullptr;
};

/// Bits of `EffectPosition::requests`; parameter k adds k to the shift.
enum EffectRequest : unsigned {
  kTakeEffectParam = 1u << 0,    ///< bits 0..4: hand value k to the instances
  kTakeEffectSource = 1u << 5,   ///< bits 5..9: hand source k and its depth to the instances
  kTakeEffectSwitch = 1u << 10,  ///< bypass follows the on switch; at on the instances are reset
  kTakeAllEffectParams = 0x1Fu,
  kTakeAllEffectSources = 0x1Fu << 5,
};

/// One of the twelve effect positions: PRE, FB and POST of four slots.
///
/// Control threads write the words and post requests; a new set of instances is handed over by
/// pointer, and the old set comes back on a list to be freed off the audio thread.
struct EffectPosition {
  EffectPosition() = default;
  ~EffectPosition();
  EffectPosition(const EffectPosition&) = delete;
  EffectPosition& operator=(const EffectPosition&) = delete;

  // Control words.
  Shared<int> type{0};  ///< type id last chosen
  Shared<bool> on{false};
  std::array<Shared<double>, kEffectParams> value;  ///< 0..1
  std::array<Shared<double>, kEffectParams> depth;  ///< cubed, -1..1
  std::array<Shared<const double*>, kEffectParams> source;
  Requests requests;

  /// Where the noise of the first instance begins; the others count on from here. Written at
  /// construction alone.
  std::uint32_t noiseSeed = 1;

  /// Gives the audio thread a new set of instances, which are complete: parameters, sources and
  /// bypass are set. Frees what came back. Control threads, one at a time.
  void handOver(std::unique_ptr<EffectInstances> instances);

  /// Frees the sets that the audio thread has handed back. Control threads, one at a time.
  void freeRetired();

  /// Takes a set that was handed over, if there is one. Audio thread, or a bulk operation while
  /// the audio thread is out. True if there was one.
  bool takeIncoming() noexcept;

  // Audio thread only.
  EffectInstances* running = nullptr;
  bool switchedOn = false;  ///< `on`, taken together with the instances' bypass
  std::array<double, kEffectParams> depthCell{};  ///< what the instances' depth pointers address
  Smoother mixSmoother;                           ///< 200 ms

 private:
  std::atomic<EffectInstances*> incoming{nullptr};
  std::atomic<EffectInstances*> retired{nullptr};
};

}  // namespace orvantesco
