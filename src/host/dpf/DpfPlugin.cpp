#include "host/dpf/DpfPlugin.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <string_view>

#include "host/PlugInfo.h"
#include "host/binding/PluginIdentity.h"
#include "host/dpf/DpfParameters.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/PortValue.h"

namespace orvantesco {
namespace {

static_assert(std::string_view(DISTRHO_PLUGIN_NAME) == PluginIdentity::name);
static_assert(std::string_view(DISTRHO_PLUGIN_URI) == PluginIdentity::lv2Uri);

constexpr std::uint32_t sideChainPort = 2;
constexpr std::uint32_t numStates = 1;

struct PortNames {
  const char* name = "";
  const char* symbol = "";
};
constexpr std::array<PortNames, DISTRHO_PLUGIN_NUM_INPUTS> inputNames{
    {{"Input Left", "in_left"}, {"Input Right", "in_right"}, {"Side Chain", "side_chain"}}};
constexpr std::array<PortNames, DISTRHO_PLUGIN_NUM_OUTPUTS> outputNames{
    {{"Output Left", "out_left"}, {"Output Right", "out_right"}}};

/// Null, and a word about it, where there is no memory for it.
std::unique_ptr<DpfEngine> buildEngine() noexcept try {
  return std::make_unique<DpfEngine>();
} catch (const std::exception& failure) {
  d_stderr("Orvantesco: there is no effect: %s", failure.what());
  return nullptr;
}

}  // namespace

/// The wrapper is in the middle of building its own object, so it is no place to throw either.
DpfPlugin::DpfPlugin() : Plugin(kDpfParameters, 0, numStates) {
  if (!isDummyInstance()) engine = buildEngine();
}

const char* DpfPlugin::getLabel() const { return PluginIdentity::name; }
const char* DpfPlugin::getDescription() const { return PluginIdentity::description; }
const char* DpfPlugin::getMaker() const { return PluginIdentity::vendor; }
const char* DpfPlugin::getLicense() const { return R"(Copyright "qlm-works".)"; }
std::uint32_t DpfPlugin::getVersion() const { return PluginIdentity::versionNumber; }
std::int64_t DpfPlugin::getUniqueId() const { return fourCharacterId(PluginIdentity::uniqueId); }

void DpfPlugin::initAudioPort(bool input, std::uint32_t index, DISTRHO::AudioPort& port) {
  const PortNames& names = input ? inputNames.at(index) : outputNames.at(index);
  port.name = names.name;
  port.symbol = names.symbol;
  if (input && index == sideChainPort) {
    port.hints = DISTRHO::kAudioPortIsSidechain;
  } else {
    port.groupId = DISTRHO::kPortGroupStereo;
  }
}

void DpfPlugin::initParameter(std::uint32_t index, DISTRHO::Parameter& parameter) {
  describeParameter(index, parameter);
}

void DpfPlugin::initPortGroup(std::uint32_t groupId, DISTRHO::PortGroup& group) {
  describeGroup(groupId, group);
}

void DpfPlugin::initState(std::uint32_t, DISTRHO::State& state) {
  state.key = kDpfStateKey;
  state.label = "State";
  state.hints = DISTRHO::kStateIsBase64Blob | DISTRHO::kStateIsOnlyForDSP;
}

float DpfPlugin::getParameterValue(std::uint32_t index) const {
  if (!engine || index > kDpfBypass) return defaultPortValue(index);
  if (index == kDpfBypass) return engine->bypassed ? 1.0F : 0.0F;
  return portValueOf(*engine->effect.GetParam(static_cast<int>(index)));
}

void DpfPlugin::setParameterValue(std::uint32_t index, float value) {
  if (!engine) return;
  if (index == kDpfBypass) {
    engine->bypassed = value > 0.5F;
  } else {
    takePortValue(engine->effect, static_cast<int>(index), value);
  }
}

DISTRHO::String DpfPlugin::getState(const char* key) const {
  if (!engine || std::strcmp(key, kDpfStateKey) != 0) return DISTRHO::String();
  return DISTRHO::String(stateText(engine->effect).c_str());
}

void DpfPlugin::setState(const char* key, const char* value) {
  if (!engine || std::strcmp(key, kDpfStateKey) != 0) return;
  stateIsTaken = takeState(value);
}

bool DpfPlugin::isStateTaken() const { return stateIsTaken; }

/// No exception may reach the host, which is C code. Hosts hand over an empty text where a session
/// holds none.
bool DpfPlugin::takeState(const char* text) noexcept try {
  if (*text == '\0') return false;
  if (restoreStateText(engine->effect, text)) return true;
  d_stderr("Orvantesco: the state of the session cannot be read and was left aside");
  return false;
} catch (const std::exception& failure) {
  d_stderr("Orvantesco: the state of the session was not restored: %s", failure.what());
  return false;
}

void DpfPlugin::activate() {
  if (!engine) return;
  engine->activate(getSampleRate(), static_cast<int>(getBufferSize()));
  setLatency(static_cast<std::uint32_t>(engine->host.latencySamples()));
}

void DpfPlugin::reset() {
  if (engine) engine->requestReset();
}

std::uint32_t DpfPlugin::getTailSamples() const { return engine ? engine->tailFrames() : 0; }

void DpfPlugin::run(const float** inputs, float** outputs, std::uint32_t frames) {
  if (!engine) {
    for (int i = 0; i < DISTRHO_PLUGIN_NUM_OUTPUTS; ++i) {
      if (outputs[i] != nullptr) std::fill_n(outputs[i], frames, 0.0F);
    }
    return;
  }
  engine->host.takePosition(getTimePosition());
  engine->run(inputs, outputs, static_cast<int>(frames));
  setLatency(static_cast<std::uint32_t>(engine->host.latencySamples()));
}

}  // namespace orvantesco
