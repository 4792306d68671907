#pragma once

#include <atomic>
#include <thread>

#include "core/Orvantesco.h"
#include "host/EditorPort.h"
#include "host/clap/ClapHostPort.h"

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

  /// A person has chosen another effect at a position (0..11) with the host's own controls. Audio
  /// thread, or the main thread while no audio runs.
  void noteChoice(int position) noexcept;

  /// Builds the effects that were chosen: what the audio thread may not do. Main thread.
  void carryOutChoices(Orvantesco& effect);

  bool hasCommittedGesture(int position) noexcept override;
  void lowerCommitFlag(int position) noexcept override;
  void setKnobValue(int paramIdx, double normalized) noexcept override;
  void refreshTapSelectors(int slot) noexcept override;
  void setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept override;
  void showMessage(std::string_view text) noexcept override;

 private:
  ClapHostPort& port;
  const ClapHost& host;
  Shared<bool> quiet{false};
  std::atomic<unsigned> choices{0};  ///< bit p: a choice at position p waits
  Shared<int> committed{-1};         ///< position whose choice is being carried out
  Shared<std::thread::id> committer{};
};

}  // namespace orvantesco
