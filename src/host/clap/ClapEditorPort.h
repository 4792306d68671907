#pragma once

#include <array>
#include <atomic>
#include <thread>

#include "core/Orvantesco.h"
#include "host/EditorPort.h"
#include "host/clap/ClapHostPort.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// Stands where the editor will: it passes on what the engine tells an editor that a host has to
/// know as well.
class ClapEditorPort : public EditorPort {
 public:
  ClapEditorPort(ClapHostPort& hostPort, const ClapHost& clapHost) noexcept
      : port(hostPort), host(clapHost) {}

  /// While it lives the engine's parameters are loaded in bulk; the host is told of that as one.
  class Quiet {
   public:
    explicit Quiet(ClapEditorPort& owner) noexcept : editor(owner) { editor.quiet = true; }
    ~Quiet() { editor.quiet = false; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    ClapEditorPort& editor;
  };

  /// A person has chosen the effect at a position (0..11) with the host's own controls. Nothing is
  /// to be done where that is the effect that runs. Audio thread, or the main thread while no audio
  /// runs.
  void noteChoice(Orvantesco& effect, int position) noexcept;

  /// A person has chosen another master effect. It runs already, with the knobs of the one before.
  /// The same threads.
  void noteMasterChoice() noexcept { wait(kMasterEffectSelector); }

  /// Builds the effects that were chosen: what the audio thread may not do. Main thread.
  void carryOutChoices(Orvantesco& effect);

  /// A load has brought effects of its own, and what was chosen before it waits no more. Main
  /// thread.
  void forgetChoices() noexcept { choices.store(0, std::memory_order_relaxed); }

  bool hasCommittedGesture(int position) noexcept override;
  void lowerCommitFlag(int position) noexcept override;
  void setKnobValue(int paramIdx, double normalized) noexcept override;
  void setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept override;
  void showEffect(int position, int typeId) noexcept override;
  void showMessage(std::string_view text) noexcept override;

 private:
  void wait(int position) noexcept;
  bool isStillAChoice(Orvantesco& effect, int position) const noexcept;
  bool runsAnother(Orvantesco& effect, int position) const noexcept;
  void askForTexts() noexcept;

  ClapHostPort& port;
  const ClapHost& host;
  Shared<bool> quiet{false};
  std::atomic<unsigned> choices{0};  ///< bit p: a choice at p waits, 12 is the master effect
  Shared<int> committed{-1};         ///< position whose choice is being carried out
  /// Type ids of the effects that run, which a knob that automation has moved does not tell.
  std::array<std::atomic<int>, numPositions> running{};
  std::atomic<unsigned> ratesInNotes{0};  ///< bit l: the rate of LFO l reads as notes, not as Hz
  Shared<std::thread::id> committer{};
};

}  // namespace orvantesco
