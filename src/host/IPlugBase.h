#pragma once

#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "fx/Shared.h"
#include "host/ChannelRecord.h"
#include "host/EHost.h"
#include "host/HostTimeInfo.h"
#include "host/LatencyBuffer.h"
#include "host/MidiMessage.h"
#include "host/PlugInfo.h"

namespace orvantesco {

class EditorPort;
class IParam;
class ParamBank;
class StateChunk;

/// The layer between a host binding and an effect: the parameter store, the channel tables, the
/// lock of the control threads, host identification and the link to the editor.
///
/// It knows no signal processing. The host operations are empty here; `IPlugAAX` fills them in.
///
/// Threads: what another thread may read while audio runs is a `Shared` word. Channel records and
/// `frameInBlock` belong to the audio thread, which never takes `mutex` but in
/// a re-initialisation for another sample rate.
class IPlugBase {
 public:
  explicit IPlugBase(const PlugInfo& info);
  IPlugBase(const IPlugBase&) = delete;
  IPlugBase& operator=(const IPlugBase&) = delete;
  virtual ~IPlugBase();

  /// A host's notice that playing starts anew. The effect keeps its sound through it.
  virtual void Reset() {}

  /// A parameter has a new value in its record. Any thread, several at once.
  virtual void OnParamChange(int paramIdx) { (void)paramIdx; }

  /// One block of any length. Audio thread. In the base: the inputs pass.
  virtual void ProcessDoubleReplacing(double** inputs, double** outputs, int nFrames);

  /// In the base: connected inputs are copied to the outputs, the other outputs cleared.
  virtual void ProcessSingleReplacing(float** inputs, float** outputs, int nFrames) noexcept;

  virtual void ProcessMidiMsg(const MidiMessage& message) noexcept { (void)message; }

  /// Appends the state / reads it at a position. The base stores the parameter values alone.
  virtual bool SerializeState(StateChunk& chunk);
  virtual int UnserializeState(const StateChunk& chunk, int startPos);

  /// Whether the parameters are, to 1e-5, the doubles stored at a position of the chunk.
  virtual bool CompareState(const StateChunk& chunk, int startPos);

  /// A gesture of the user sets a parameter (0..1): stores it, tells the host, dispatches it.
  /// Control thread. An index out of range does nothing.
  virtual void SetParameterFromGUI(int paramIdx, double normalized);

  virtual void BeginInformHostOfParamChange(int paramIdx) { (void)paramIdx; }
  virtual void InformHostOfParamChange(int paramIdx, double normalized);
  virtual void EndInformHostOfParamChange(int paramIdx) { (void)paramIdx; }

  /// Tempo in beats per minute, always finite and above 0. Audio thread, as all of the transport.
  virtual double GetTempo() noexcept { return HostTimeInfo{}.tempo; }
  /// Samples since the start of the song, at `frameInBlock`.
  virtual double GetSamplePos() noexcept { return 0.0; }
  virtual void GetTimeSig(int& numerator, int& denominator) noexcept;
  /// The transport at `frameInBlock`. All positions are finite.
  virtual void GetTime(HostTimeInfo* info) noexcept { *info = HostTimeInfo{}; }

  virtual EHost GetHost() const noexcept { return host; }
  /// The kind of plug-in interface, a number that reports show.
  virtual int GetAPI() const noexcept { return 0; }

  /// Asks for another size of the editor's window in pixels. Editor thread.
  virtual bool ResizeGraphics(int width, int height);

  /// Reports the latency to the host, stores it and fits the latency buffer, which takes memory
  /// only beyond `LatencyBuffer::reservedFrames`. Audio thread or main thread.
  virtual void SetLatency(int samples) noexcept;

  /// Sets the controls that are bound to parameters to the stored values. Editor thread.
  virtual void RedrawParamControls();

  /// The longest block that will come. Where it differs, the scratch buffers are sized and cleared.
  /// Not while audio runs.
  virtual void SetBlockSize(int frames);

  /// The host's rate in Hz; `sampleRate` as it is in the base. Audio thread.
  virtual double GetSampleRate() noexcept { return sampleRate; }
  void SetSampleRate(double rateHz) noexcept { sampleRate = rateHz; }

  /// The record of a parameter, null for an index out of range. Any thread.
  IParam* GetParam(int index) const noexcept;
  int NParams() const noexcept { return static_cast<int>(params.size()); }

  /// Identifies the host. Version: major, minor and patch in bytes 2, 1 and 0.
  void SetHost(const char* name, int version);

  /// Connect or disconnect channels, and point them at a block. What lies beyond the channels that
  /// there are is left out. A channel that is not connected points at a scratch buffer. `offset`
  /// is the frame of the buffers at which the block begins. Audio thread.
  void AttachInput(ChannelRange range, bool connected) noexcept;
  void AttachOutput(ChannelRange range, bool connected) noexcept;
  void SetInputPointers(ChannelRange range, double* const* buffers, int offset = 0) noexcept;
  void SetOutputPointers(ChannelRange range, double* const* buffers, int offset = 0) noexcept;

  bool IsInChannelConnected(int channel) const noexcept;
  bool IsOutChannelConnected(int channel) const noexcept;

  /// Parameter values as doubles in index order. Reading clamps each to its range (what is no
  /// number becomes the minimum), keeps the rest of a chunk that ends early, and then dispatches
  /// every parameter. Returns the position behind the values, -1 where the chunk ended early.
  bool SerializeParams(StateChunk& chunk);
  int UnserializeParams(const StateChunk& chunk, int startPos);

  /// Stores values in index order, as many as there are, and dispatches every parameter.
  void takeParamValues(const std::vector<double>& values);

  // ---- what the effect and its binding share ----

  std::unique_ptr<ParamBank> bank;
  std::vector<IParam*> params;            ///< index = parameter index; the bank owns the records
  std::recursive_mutex mutex;             ///< the one lock of the system, never taken by audio
  Shared<EditorPort*> graphics{nullptr};  ///< the editor, or null

  Shared<double> sampleRate{44100.0};
  Shared<int> blockSize{0};
  Shared<int> latency{0};
  Shared<EHost> host{EHost::unknown};
  Shared<int> hostVersion{0};

  const PlugInfo description;
  const std::uint32_t uniqueId;
  const std::uint32_t manufacturerId;
  const int version;

  std::vector<ChannelRecord> inputChannels;
  std::vector<ChannelRecord> outputChannels;

  /// The frame of the host's block that the transport is asked for. The driver sets it before
  /// `GetTime`. Audio thread.
  int frameInBlock = 0;

 protected:
  struct PassThrough {
    int inputCount = 0;  ///< inputs 0..n-1 pass; a side chain behind them does not
    int frames = 0;
  };

  /// The bypassed signal: the inputs, held back by the latency so that a host's compensation fits
  /// them, and silence on the other outputs. Audio thread.
  void passThrough(double* const* inputs, double* const* outputs, PassThrough pass) noexcept;

  void clearScratch() noexcept;

  LatencyBuffer latencyBuffer;

 private:
  std::vector<std::vector<double>> inputScratch;
  std::vector<std::vector<double>> outputScratch;
};

}  // namespace orvantesco
