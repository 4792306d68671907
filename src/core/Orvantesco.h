#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "core/BulkGate.h"
#include "core/Buses.h"
#include "core/DryFifo.h"
#include "core/EffectPosition.h"
#include "core/Fade.h"
#include "core/GlobalControls.h"
#include "core/LimiterStage.h"
#include "core/ModulatorControls.h"
#include "core/ModulatorOutputs.h"
#include "core/ModulatorUnits.h"
#include "core/Rings.h"
#include "core/SettingsStore.h"
#include "core/Slot.h"
#include "core/StateMigration.h"
#include "core/StereoPointers.h"
#include "core/TempoTracker.h"
#include "core/TriggerFlags.h"
#include "delay/TapPatterns.h"
#include "fx/IppFixBiquad.h"
#include "host/EditorPort.h"
#include "host/HostPort.h"
#include "host/IPlugAAX.h"
#include "master/MasterEffectFactory.h"
#include "params/ParamIndex.h"

namespace orvantesco {

struct SlotPass;
struct TapPlan;
struct TapVoice;

/// What the owner of an effect object may choose at its construction.
struct OrvantescoOptions {
  EditorPort* editor = nullptr;       ///< null runs without an editor
  int mainInputs = 2;                 ///< channels of the main input: 1 or 2
  bool sideChain = false;             ///< one more input channel carries a side chain
  std::optional<std::uint32_t> seed;  ///< fixes every random source; the clock otherwise
};

/// The effect: it owns the parameter bank, the four slots, the buses and everything between.
///
/// Three calls drive it: `ProcessDoubleReplacing` on the audio thread, `OnParamChange` on any
/// thread (the audio thread too, several at once), and bulk operations on control threads.
/// Control threads store control words and post requests; the audio thread carries requests out
/// between sub-blocks of 32 samples, so that no reader ever sees half of a change.
class Orvantesco : public IPlugAAX {
 public:
  /// Builds the object graph and dispatches all parameters once. `hostPort` must outlive the
  /// object.
  explicit Orvantesco(HostPort& hostPort, const OrvantescoOptions& options = {});
  ~Orvantesco() override;
  Orvantesco(const Orvantesco&) = delete;
  Orvantesco& operator=(const Orvantesco&) = delete;

  /// Brings the value of a parameter into the engine. Any thread; unknown indices do nothing.
  void OnParamChange(int paramIdx) override;

  /// Processes `nFrames` frames (any number) of the connected inputs to two outputs. Audio thread.
  /// Buffers may be shared between inputs and outputs.
  void ProcessDoubleReplacing(double** inputs, double** outputs, int nFrames) override;

  /// Tells which inputs the host connects, and takes the inputs of slots and envelopes anew. The
  /// audio thread must be out of the object.
  void connectInputs(int mainInputs, bool sideChain);

  /// Takes the host's rate: sizes, filters, times. Does nothing unless `force` is set or the rate
  /// differs from the last one initialised. Allocates; audio thread at a change of rate, or a
  /// control thread while no audio runs.
  void InitForSampleRate(bool force);

  /// Clears all signal state; parameters, modulators and smoothers keep theirs. Audio thread, or a
  /// control thread while the audio thread is out.
  void ResetDSP();

  /// `ResetDSP` at the start of the next sub-block, whenever that is. Any thread.
  void requestReset() noexcept { globalRequests.post(kResetSignals); }

  /// `ResetDSP` between two blocks: nothing from before is heard from the next frame on, and all
  /// that comes in from there on is. The modulators begin anew, their random draws with them, so
  /// that a passage sounds alike however often it is played. While a bulk operation runs, which
  /// ends with a reset of its own, it is a request. Neither locks nor allocates. Audio thread.
  void resetAtOnce();

  /// Takes the host's rate ahead of the first block at it, and reports the latency, so that the
  /// block itself takes no memory. Control thread while no audio runs. Left out, the first block
  /// does it.
  ///
  /// A rate that another instance has put in force meanwhile gives way to this one's. No block
  /// does that: two that play at once would initialise each other in turn.
  void prepareToPlay();

  /// Takes the host's rate and puts the effect where it stands each time before it begins to play:
  /// the fade and the glides of a start are over, nothing sounds, and the modulators are at their
  /// beginning. What is played from here is the same to the bit whatever was played before.
  /// Runs a second of silence. Allocates. Control thread while no audio runs.
  void startAnew();

  /// `ResetDSP` behind a fade.
  void ResetWithFade();

  /// Seconds until the slowest echo of the present settings has been heard once. Any thread.
  double longestDelayInUse() const;

  /// Seconds until what a full-scale input left behind has fallen below -90 dB: infinite where a
  /// loop does not fade. Any thread.
  double tailSeconds() const;

  /// Index of the parameter that the user is moving, -1 for none.
  int touchedParameter() const noexcept { return touchedParam; }

  /// A control of the editor is about to move a parameter. Any thread.
  void touchParameter(int paramIdx) noexcept { touchedParam = paramIdx; }

  /// Sends the band that an envelope modulator (0 or 1) hears to the output in place of the sound;
  /// -1 ends it. Any thread.
  void listenToEnvelope(int envelope) noexcept { modulatorControls.listenTo = envelope; }

  /// What the modulators gave in the last sub-block. Audio thread, or while it is out.
  const ModulatorOutputs& modulatorOutputs() const noexcept { return modulators; }

  /// Which taps of a slot (0..3) sound in "TAPPED" mode. Any thread.
  void setTapMasks(int slot, TapMasks masks);
  TapMasks tapMasks(int slot) const;
  /// On which taps of a slot the POST effect runs while tap rows drive it. Any thread.
  void setStepFxMask(int slot, std::uint16_t mask);
  /// On which taps of a slot the parameter that a row (0, 1) drives may be modulated. Any thread.
  void setStepModMask(int row, int slot, std::uint16_t mask);

  /// Replaces the editor (null for none). Control thread, while no parameter is dispatched.
  void setEditor(EditorPort* port) { graphics = port; }

  /// Presets and states, and what an editor shows beside the parameters.
  SettingsStore& settings() noexcept { return settingsStore; }
  const SettingsStore& settings() const noexcept { return settingsStore; }

  // The store's operations that hosts and the preset library know by these names; control threads,
  // never under `mutex`.

  /// Appends the state block. False where the chunk could not grow.
  bool SerializeState(StateChunk& chunk) override { return settingsStore.saveState(chunk); }

  /// Restores the state block at a position; returns the position behind it, -1 where it ends
  /// early or is of a version that cannot be read.
  int UnserializeState(const StateChunk& chunk, int startPos) override;

  /// Reads a preset file below the presets' root, given as "/User Presets/Slap.txt". Where it is
  /// none, the label of the preset's name says so, the result is false, and nothing else changes.
  bool readPresetFile(const std::string& relativePath) {
    return settingsStore.readPresetFile(relativePath);
  }

  /// Applies what `readPresetFile` has read. A preset of an older version is rewritten in place,
  /// once its old file is kept below the backups; where that fails, the user is told. A file that
  /// has changed since it was read stays as it is.
  void applyLoadedPreset() { settingsStore.applyLoadedPreset(); }

  /// Both, with no other load, save or restore in between.
  bool loadPresetFile(const std::string& relativePath) {
    return settingsStore.loadPresetFile(relativePath);
  }

  /// Writes the present settings; an empty path does nothing. `rewriteAfterMigration` keeps the
  /// file that is there in the backups first. True means failure.
  bool writePresetFile(const std::string& fullPath, bool rewriteAfterMigration) {
    return settingsStore.writePresetFile(fullPath, rewriteAfterMigration);
  }

  /// Shows a message about presets to the user.
  void showMessage(PresetMessage message) { settingsStore.showMessage(message); }

  /// Whether a preset is being applied.
  bool presetIsLoading() const noexcept { return gate.presetLoading(); }

 private:
  friend class ParamDispatch;
  friend class SettingsStore;     ///< brings whole settings to the words behind the parameters
  friend struct OrvantescoProbe;  ///< tests look at the words behind the parameters

  // Life cycle (Lifecycle.cpp).
  void dispatchAllParameters();
  void attachInputs(int mainInputs, bool sideChain);
  void initForRate(double hostRate);
  void sizeSlot(Slot& slot);
  void renewEffects();
  void clearSlot(Slot& slot) noexcept;

  // Block driver (BlockDriver.cpp).
  void followHost();
  bool followHostRate();
  void settle() noexcept;
  void restart() noexcept;
  void takeInput(double** inputs, int first, int count) noexcept;
  void giveOutput(double** outputs, int first, int count) noexcept;
  void processSubBlock() noexcept;
  void runSubBlock(const HostTimeInfo& time) noexcept;
  void readRings() noexcept;
  void prepareBuses() noexcept;
  void runSlots() noexcept;
  void applyGlobalWidth() noexcept;
  void writeOutput() noexcept;

  // Modulators (Modulators.cpp).
  void updateModulators() noexcept;
  void updateEnvelope(int number) noexcept;
  void updateGate(int number) noexcept;
  void updateLfo(int number) noexcept;
  void updateLogic(int number) noexcept;
  const double* envelopeSource(int menuPosition) const noexcept;

  // Master effect (MasterEffectRunner.cpp).
  void buildMasterEffects();
  void takeMasterEffect(unsigned bits) noexcept;
  void runMasterEffect() noexcept;
  DSPShell* selectedMasterEffect() noexcept;  ///< null at "OFF"

  // Requests of the control threads (RequestRunner.cpp).
  void carryOutRequests() noexcept;
  void carryOutGlobalRequests() noexcept;
  void carryOutSlotRequests(Slot& slot) noexcept;
  void silenceSlot(Slot& slot) noexcept;
  void carryOutEffectRequests(int position) noexcept;

  // Slot path (SlotPath.cpp, SlotDelay.cpp, SlotOutput.cpp).
  void processSlot(int slot) noexcept;
  void writeFeedback(int slot, double feedbackL, double feedbackR) noexcept;
  StereoInput inputOf(const Slot& slot) const noexcept;
  StereoInput directOutOf(const Slot& slot) const noexcept;
  void takeSource(Slot& slot) noexcept;
  void offsetChannels(Slot& slot) noexcept;
  void runPreEffect(Slot& slot, const SlotPass& pass) noexcept;
  void planDelays(Slot& slot, SlotPass& pass) noexcept;
  void planFeedback(Slot& slot, const SlotPass& pass) noexcept;
  void feedDelays(Slot& slot, const SlotPass& pass) noexcept;
  void readDelays(Slot& slot, SlotPass& pass) noexcept;
  void runFeedbackEffect(Slot& slot, const SlotPass& pass) noexcept;
  void mixDelay(Slot& slot) noexcept;
  void runPostEffect(Slot& slot, const SlotPass& pass) noexcept;
  void placeInField(Slot& slot) noexcept;
  void sendOut(Slot& slot) noexcept;
  void addToRouteSums(Slot& slot) noexcept;

  // Tap loop (TapLoop.cpp).
  void readTaps(Slot& slot, SlotPass& pass) noexcept;
  void soundTap(Slot& slot, const SlotPass& pass, const TapPlan& plan,
                const TapVoice& voice) noexcept;
  void runTapFeedbackEffect(Slot& slot) noexcept;

  // Effect runner (EffectRunner.cpp).
  bool effectIsOn(int slot, int stage) const noexcept;
  bool effectRuns(int slot, int stage) const noexcept;  ///< on, and not being replaced
  void runEffect(const StereoPointers& in, const StereoPointers& out, EffectPosition& position,
                 int index) noexcept;
  void runEffectPair(const StereoPointers& in, const StereoPointers& out,
                     EffectPosition& position) noexcept;
  void runEffectInPlace(double* left, double* right, EffectPosition& position, int index) noexcept;

  EffectPosition& positionOf(const Slot& slot, int stage) noexcept {
    return positions[static_cast<std::size_t>(effectPositionIndex(slot.index, stage))];
  }
  bool mainInputIsMono() const noexcept;

  // Control words, requests and flags: any thread.
  std::array<Slot, numSlots> slots;
  std::array<EffectPosition, kEffectPositions> positions;
  GlobalControls globals;
  ModulatorControls modulatorControls;
  Requests globalRequests;
  Fade fade;
  std::array<std::atomic<bool>, kEffectStages> fxBusy{};  ///< effects of the stage are replaced
  BulkGate gate;
  StateMigration migration;
  Shared<int> touchedParam{-1};
  std::mutex typeMutex;  ///< one change of effect type at a time; never the audio thread

  SettingsStore settingsStore{*this};

  // Audio thread only.
  Rings rings;
  Buses buses;
  StereoVector effectScratch;
  RouteSums routeSums;
  DryFifo dryFifoL, dryFifoR;
  TempoTracker tempoTracker;
  TriggerFlags triggers;
  ModulatorOutputs modulators;
  ModulatorUnits modulatorUnits;
  std::uint32_t modulatorSeed = 1;  ///< where their random draws begin
  IppFixBiquad inputFilterL, inputFilterR;
  LimiterStage limiter;
  std::array<std::unique_ptr<DSPShell>, kMasterEffects> masterEffects;  ///< in the menu's order
  int masterFxRunning = kMasterFxOff;  ///< the type that the audio thread has taken
  double fadeGain = 1.0;
  double lastSeenSampleRate = -1.0;
  bool latencyPending = false;
};

}  // namespace orvantesco
