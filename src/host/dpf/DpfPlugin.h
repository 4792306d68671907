#pragma once

#include <memory>

#include <DistrhoPlugin.hpp>
#include "host/dpf/DpfEngine.h"

namespace orvantesco {

/// The plug-in as the wrapper of VST3, LV2 and JACK sees it. It hands on; nothing else.
///
/// The wrapper builds objects that only answer questions, to list the plug-in in a host or to write
/// turtle files. Such a one has no engine, costs a millisecond and knows the parameters' defaults.
///
/// Threads: `run` and `setParameterValue` on the audio thread, the latter on any other too; states
/// on control threads while audio runs; the rest while none runs.
class DpfPlugin : public DISTRHO::Plugin {
 public:
  DpfPlugin();

  /// The engine, null where the object only answers questions or found no memory.
  DpfEngine* instance() noexcept { return engine.get(); }

 protected:
  const char* getLabel() const override;
  const char* getDescription() const override;
  const char* getMaker() const override;
  const char* getLicense() const override;
  std::uint32_t getVersion() const override;
  std::int64_t getUniqueId() const override;

  void initAudioPort(bool input, std::uint32_t index, DISTRHO::AudioPort& port) override;
  void initParameter(std::uint32_t index, DISTRHO::Parameter& parameter) override;
  void initPortGroup(std::uint32_t groupId, DISTRHO::PortGroup& group) override;
  using Plugin::initState;
  void initState(std::uint32_t index, DISTRHO::State& state) override;

  float getParameterValue(std::uint32_t index) const override;
  void setParameterValue(std::uint32_t index, float value) override;
  DISTRHO::String getState(const char* key) const override;
  void setState(const char* key, const char* value) override;
  bool isStateTaken() const override;

  void activate() override;
  void reset() override;
  std::uint32_t getTailSamples() const override;
  void run(const float** inputs, float** outputs, std::uint32_t frames) override;

 private:
  bool takeState(const char* text) noexcept;

  std::unique_ptr<DpfEngine> engine;
  bool stateIsTaken = true;  ///< the last one that was handed over
};

}  // namespace orvantesco
