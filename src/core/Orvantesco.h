#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/Buses.h"
#include "core/DryFifo.h"
#include "core/EditorState.h"
#include "core/EffectPosition.h"
#include "core/Fade.h"
#include "core/GlobalControls.h"
#include "core/LimiterStage.h"
#include "core/ModulatorControls.h"
#include "core/ModulatorOutputs.h"
#include "core/ModulatorUnits.h"
#include "core/Rings.h"
#include "core/Slot.h"
#include "core/StateMigration.h"
#include "core/TempoTracker.h"
#include "core/TriggerFlags.h"
#include "delay/TapPatterns.h"
#include "fx/IppFixBiquad.h"
#include "host/EditorPort.h"
#include "host/HostPort.h"
#include "host/IPlugAAX.h"
#include "master/MasterEffectFactory.h"
#include "presets/PresetMenuPort.h"
#include "presets/PresetMessages.h"
#include "presets/PresetReader.h"

namespace orvantesco {

/// Two channels that are only read.
struct StereoInput {
  const double* left = nullptr;
  const double* right = nullptr;
};

/// Two channels that are worked on. Either may be null where one channel alone is meant.
struct StereoPointers {
  double* left = nullptr;
  double* right = nullptr;
};

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

  /// Takes the host's rate ahead of the first block at it, and reports the latency, so that the
  /// block itself takes no memory. Control thread while no audio runs. Left out, the first block
  /// does it.
  void prepareToPlay() { followHostRate(); }

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

  /// The editor's controls outside the bank. Any thread.
  void setDryMute(bool muted);
  /// Position of the "ATTENUATION" control, 0..1 (see `attenuationGain`).
  void setAttenuation(double position);
  /// The editor has turned to a page; out of range does nothing. While a preset loads, the page
  /// that it brings stands.
  void setCurrentPage(int page);
  /// The colours, 0 .. `kColourSets` - 1; out of range does nothing.
  void setColourSet(int set);

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

  // State and presets. Control threads, never under `mutex`; any number at once, one after the
  // other. Audio may run: it is silent meanwhile and never waits.

  /// Appends the state block. False where the chunk could not grow.
  bool SerializeState(StateChunk& chunk) override;

  /// Restores the state block at a position; returns the position behind it, -1 where it ends
  /// early or is of a version that cannot be read. Of a newer version nothing is taken, and the
  /// editor shows a message; of one that is too old the parameters get their defaults, without
  /// notice to the engine.
  int UnserializeState(const StateChunk& chunk, int startPos) override;

  /// Restores what was read from a block.
  void restoreState(const HostState& state);

  /// Applies a preset of any version, from wherever it comes: parameters that it does not list get
  /// their defaults, and nothing is selected in the library's menu.
  void applyPreset(const PresetFile& preset);

  /// What a preset file of the present settings holds.
  PresetFile currentPreset() const;

  /// Reads a preset file below the presets' root, given as "/User Presets/Slap.txt". Where it is
  /// none, the label of the preset's name says so, the result is false, and nothing else changes.
  bool readPresetFile(const std::string& relativePath);

  /// Applies what `readPresetFile` has read. A preset of an older version is rewritten in place,
  /// once its old file is kept below the backups.
  void applyLoadedPreset();

  /// Writes the present settings; an empty path does nothing. `rewriteAfterMigration` keeps the
  /// file that is there in the backups first. True means failure.
  bool writePresetFile(const std::string& fullPath, bool rewriteAfterMigration);

  /// Where the preset folders lie; nothing is read or written before it is told.
  void setPresetRoot(const std::string& path);

  /// Name and folder of the preset that the editor shows. `relativePath` is below the presets'
  /// root.
  void showPreset(const std::string& relativePath);
  void showPreset(const std::string& name, const std::string& folderLabel);

  /// Shows a message about presets to the user.
  void showMessage(PresetMessage message);

  /// Whether a preset is being applied.
  bool presetIsLoading() const noexcept { return presetLoading; }

  /// Name and folder label as the editor shows them.
  std::string presetName();
  std::string presetFolderLabel();

  /// The preset that is selected in the library's menu.
  PresetSelection presetSelection();

  /// The menu that knows what is selected (null for none: then any selection is taken over as it
  /// was saved). It takes the present selection over, and leaves its own when it goes.
  void setPresetMenu(PresetMenuPort* menu);

 protected:
  /// Stops the audio path for the duration of a bulk operation: raises a flag, waits until the
  /// audio thread has left the call that it may be in, and lowers the flag at the end. One at a
  /// time, and never begun under `mutex`: the audio thread may be waiting for that one.
  class BulkOperation {
   public:
    BulkOperation(Orvantesco& effect, std::atomic<bool>& flag);
    ~BulkOperation();
    BulkOperation(const BulkOperation&) = delete;
    BulkOperation& operator=(const BulkOperation&) = delete;

   private:
    Orvantesco& effect;
    std::atomic<bool>& flag;
  };

 private:
  friend class ParamDispatch;
  friend struct OrvantescoProbe;  ///< tests look at the words behind the parameters

  // Life cycle (Lifecycle.cpp).
  void dispatchAllParameters();
  void attachInputs(int mainInputs, bool sideChain);
  void initForRate(double hostRate);
  void sizeSlot(Slot& slot);
  void renewEffects();
  void clearSlot(Slot& slot) noexcept;

  // State and presets (HostStateBlock.cpp, PresetLoad.cpp).
  HostState stateOutsideTheBank();
  void select(const PresetSelection& selection);
  void takeColourSet(const HostState& state);
  void setParametersToDefaults();
  void takeEditorState(const HostState& state);
  void takePage(std::optional<int> page);
  void takeMasks(const HostState& state);
  void takeMasks(const PresetFile& preset);
  void takeParameters(const HostState& state);
  void takeParameters(const PresetFile& preset);
  void selectRateForms(const std::vector<double>& values);
  void showRestored(const HostState& state);
  void showLoaded();
  void settle();
  PresetFile loadPreset(const PresetFile& preset);
  void refusePreset(std::string_view reason);
  bool keepBackup(const std::string& fullPath) const;
  /// The editor, or one that ignores everything.
  EditorPort& editor() const noexcept;

  // Block driver (BlockDriver.cpp).
  void followHost();
  bool followHostRate();
  void takeInput(double** inputs, int first, int count) noexcept;
  void giveOutput(double** outputs, int first, int count) noexcept;
  void processSubBlock() noexcept;
  void readRings() noexcept;
  void prepareBuses() noexcept;
  void runSlots() noexcept;
  void applyGlobalWidth() noexcept;
  void writeOutput() noexcept;
  bool audioIsBlocked() const noexcept;

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
  bool bulkOperationRuns() const noexcept;
  /// Whether a restore or a preset load runs on the calling thread.
  bool bulkOperationIsMine() const noexcept;

  // Control words, requests and flags: any thread.
  std::array<Slot, kSlots> slots;
  std::array<EffectPosition, kEffectPositions> positions;
  GlobalControls globals;
  ModulatorControls modulatorControls;
  Requests globalRequests;
  Fade fade;
  std::array<std::atomic<bool>, kEffectStages> fxBusy{};  ///< effects of the stage are replaced
  std::atomic<bool> constructing{true};
  std::atomic<bool> restoringState{false};
  std::atomic<bool> presetLoading{false};
  std::atomic<bool> audioInside{false};       ///< the audio thread is in ProcessDoubleReplacing
  std::atomic<std::thread::id> bulkThread{};  ///< thread of the restore or preset load
  StateMigration migration;
  EditorState editorState;
  Shared<int> touchedParam{-1};
  std::mutex typeMutex;  ///< one change of effect type at a time; never the audio thread

  // State and presets: whoever holds `bulkMutex`, which is taken before `mutex`.
  std::recursive_mutex bulkMutex;
  PresetMenuPort* presetMenu = nullptr;
  std::string presetRootPath;
  std::string presetFilePath;  ///< of the file opened last
  PresetFile loadedPreset;     ///< read, to be applied
  int lastPageLoaded = kDelayPage;

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
  IppFixBiquad inputFilterL, inputFilterR;
  LimiterStage limiter;
  std::array<std::unique_ptr<DSPShell>, kMasterEffects> masterEffects;  ///< in the menu's order
  int masterFxRunning = kMasterFxOff;  ///< the type that the audio thread has taken
  double fadeGain = 1.0;
  double lastSeenSampleRate = -1.0;
  bool latencyPending = false;
};

}  // namespace orvantesco
