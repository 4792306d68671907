#include "host/clap/ClapPlugin.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/clap/ClapExtensions.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

bool isRate(double rateHz) noexcept { return std::isfinite(rateHz) && rateHz > 0.0; }

constexpr std::uint32_t kLongestBlock = std::numeric_limits<std::int32_t>::max();

bool canSound(const clap_process_t& block) noexcept {
  return block.audio_outputs != nullptr && block.audio_outputs_count > 0 &&
         block.frames_count <= kLongestBlock;
}

/// The place of the effect that a parameter chooses, -1 where it chooses none.
int selectorOf(int paramIdx) noexcept {
  if (paramIdx == kMasterFx) return kMasterEffectSelector;
  return isFxType(paramIdx) ? paramIdx - kFxTypePre : -1;
}

OrvantescoOptions optionsFor(const ClapPorts::Layout& layout, EditorPort& editor) noexcept {
  OrvantescoOptions options;
  options.editor = &editor;
  options.mainInputs = static_cast<int>(layout.mainInputs);
  options.sideChain = layout.sideChain;
  return options;
}

}  // namespace

ClapPlugin::Parts::Parts(ClapPlugin& owner)
    : effect(owner.port, optionsFor(owner.ports.layout(), owner.editor)),
      parameters(effect),
      state(effect, parameters),
      presets(effect),
      tail(effect),
      bypass(effect) {
  effect.SetHost(owner.host.name(), owner.host.version());
}

ClapPlugin::ClapPlugin(const clap_host_t& clapHost) : table(clapTableOf(*this)), host(&clapHost) {}

ClapPlugin* ClapPlugin::behind(const clap_plugin_t* plugin) noexcept {
  return plugin != nullptr ? static_cast<ClapPlugin*>(plugin->plugin_data) : nullptr;
}

bool ClapPlugin::init() {
  if (stage != Stage::created) return false;
  host.findExtensions();
  threads.expectMain("init");
  const ClapEditorPort::Quiet quiet(editor);
  const ClapHostPort::LatencyWindow window(port);
  initialised = std::make_unique<Parts>(*this);
  initialised->effect.prepareToPlay();
  initialised->presets.prepareLibrary();
  stage = Stage::initialised;
  return true;
}

bool ClapPlugin::activate(double rateHz, std::uint32_t maxFrames) {
  threads.expectMain("activate");
  if (stage != Stage::initialised || !isRate(rateHz) || maxFrames == 0) return false;
  const ClapHostPort::LatencyWindow window(port);
  prepare(rateHz, static_cast<int>(std::min<std::uint32_t>(maxFrames, ClapBuffers::longestPart)));
  if (window.sawChange()) host.latencyChanged();
  stage = Stage::active;
  return true;
}

void ClapPlugin::prepare(double rateHz, int longest) {
  const ClapPorts::Layout& layout = ports.layout();
  Parts& all = *initialised;
  port.setSampleRate(rateHz);
  buffers.prepare(longest, layout);
  all.effect.connectInputs(static_cast<int>(layout.mainInputs), layout.sideChain);
  all.bypass.prepare(longest, rateHz, all.parameters.isBypassed());
  all.tail.prepare(rateHz);
}

void ClapPlugin::deactivate() noexcept {
  threads.expectMain("deactivate");
  if (isActive()) stage = Stage::initialised;
}

bool ClapPlugin::startProcessing() noexcept {
  threads.expectAudio("start_processing");
  if (stage != Stage::active) return false;
  stage = Stage::processing;
  return true;
}

void ClapPlugin::stopProcessing() noexcept {
  threads.expectAudio("stop_processing");
  if (stage == Stage::processing) stage = Stage::active;
}

void ClapPlugin::reset() noexcept {
  threads.expectAudio("reset");
  if (!isActive()) return;
  initialised->bypass.reset();
  initialised->tail.forget();
}

clap_process_status ClapPlugin::process(const clap_process_t& block) noexcept {
  threads.expectAudio("process");
  if (!isActive()) return CLAP_PROCESS_ERROR;
  const ClapHostPort::Visit visit(port);
  port.takeTransport(block.transport, 0);
  ClapEvents events(block.in_events);
  const bool isHeard = stage == Stage::processing && canSound(block);
  if (isHeard) renderBetween(events, block);
  const auto end = static_cast<int>(std::min(block.frames_count, kLongestBlock));
  events.takeAll([&](const auto& event) { take(event, end); });
  tell(block.out_events);
  const bool isWell = isHeard || (stage == Stage::processing && block.frames_count == 0);
  return isWell ? advice() : CLAP_PROCESS_ERROR;
}

/// Up to the events of the block and on behind them.
void ClapPlugin::renderBetween(ClapEvents& events, const clap_process_t& block) noexcept {
  buffers.take(block);
  for (std::uint32_t frame = 0; frame < block.frames_count;) {
    const auto first = static_cast<int>(frame);
    events.takeUpTo(frame, [&](const auto& event) { take(event, first); });
    const std::uint32_t end = events.nextFrame(block.frames_count);
    render(first, static_cast<int>(end - frame));
    frame = end;
  }
  for (std::uint32_t i = 0; i < block.audio_outputs_count; ++i) {
    block.audio_outputs[i].constant_mask = 0;
  }
}

clap_process_status ClapPlugin::advice() noexcept {
  initialised->tail.tempoIs(port.tempo());
  initialised->tail.bypassIs(initialised->bypass.isBypassed());
  const clap_process_status status = initialised->tail.status();
  if (initialised->tail.hasNews()) host.tailChanged();
  return status;
}

void ClapPlugin::take(const clap_event_header_t& event, int frame) noexcept {
  if (const auto* const value = parameterValueIn(event)) {
    takeValue(*value);
  } else if (const auto* const transport = transportIn(event)) {
    port.takeTransport(transport, frame);
  }
}

/// Automation leaves the effects alone; a person who turns the host's own knob of one chooses it as
/// in an editor, the one that automation has left in the knob too. While the plug-in is inactive no
/// automation plays, and every value is a person's.
void ClapPlugin::takeValue(const clap_event_param_value_t& event) noexcept {
  const auto taken = initialised->parameters.set(event.param_id, event.value);
  if (taken == ClapParameters::Taken::refused) return;
  if (taken == ClapParameters::Taken::moved) initialised->tail.settingsChanged();
  const bool isChoice = (event.header.flags & CLAP_EVENT_IS_LIVE) != 0 || !isActive();
  const int position = selectorOf(static_cast<int>(event.param_id));
  if (!isChoice || position < 0) return;
  if (position != kMasterEffectSelector) {
    editor.noteChoice(initialised->effect, position);
  } else if (taken == ClapParameters::Taken::moved) {
    editor.noteMasterChoice();
  }
}

void ClapPlugin::render(int first, int frames) noexcept {
  Parts& all = *initialised;
  for (const int end = first + frames; first < end; first += buffers.partLength()) {
    port.beginPart(first);
    AudioBlock part = buffers.part(first, end - first);
    part.bypass = all.parameters.isBypassed();
    all.tail.hear(part);
    all.bypass.process(part);
    all.tail.look(part);
    buffers.deliver();
  }
}

/// What the plug-in has moved itself changes the tail as what the host has moved does.
void ClapPlugin::tell(const clap_output_events_t* list) noexcept {
  if (!port.hasNews()) return;
  sendChanges(port, initialised->parameters, list);
  initialised->tail.settingsChanged();
}

void ClapPlugin::flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept {
  if (initialised == nullptr) return;
  const ClapHostPort::Visit visit(port);
  if (isActive()) {
    threads.expectAudio("flush");
  } else {
    threads.expectMain("flush");
  }
  ClapEvents(in).takeAll([&](const auto& event) { take(event, 0); });
  tell(out);
  if (out != nullptr && port.hasNews()) askToComeAgain();
}

/// For what the list had no room for. No flush may be asked for on the audio thread.
void ClapPlugin::askToComeAgain() const noexcept {
  if (isActive()) {
    host.requestProcess();
  } else {
    host.requestFlush();
  }
}

void ClapPlugin::runDuties() {
  threads.expectMain("on_main_thread");
  const unsigned duties = port.takeDuties();
  if (duties & ClapHostPort::kBuildEffects) {
    editor.carryOutChoices(initialised->effect);
    host.requestProcess();
  }
  clap_param_rescan_flags flags = 0;
  if (duties & ClapHostPort::kRescanValues) flags |= CLAP_PARAM_RESCAN_VALUES;
  if (duties & ClapHostPort::kRescanTexts) flags |= CLAP_PARAM_RESCAN_TEXT | CLAP_PARAM_RESCAN_INFO;
  if (flags != 0) host.rescanParameters(flags);
}

bool ClapPlugin::selectPorts(clap_id layout) noexcept {
  threads.expectMain("audio_ports_config.select");
  return !isActive() && ports.select(layout);
}

bool ClapPlugin::loadState(const clap_istream_t& stream) {
  threads.expectMain("state.load");
  if (initialised == nullptr) return false;
  {
    const ClapEditorPort::Quiet quiet(editor);
    if (!initialised->state.load(stream)) return false;
    editor.forgetChoices();
  }
  tellOfLoad();
  return true;
}

bool ClapPlugin::loadPreset(std::uint32_t kind, const char* location, const char* key) {
  threads.expectMain("preset_load.from_location");
  if (initialised == nullptr) return false;
  std::string fault;
  {
    const ClapEditorPort::Quiet quiet(editor);
    fault = initialised->presets.load(kind, location, key);
    if (fault.empty()) editor.forgetChoices();
  }
  if (!fault.empty()) {
    host.presetRefused({kind, location, key, fault.c_str()});
    return false;
  }
  tellOfLoad();
  host.presetLoaded(kind, location, key);
  host.markStateDirty();
  return true;
}

/// Everything may have moved, names and texts with it. Main thread.
void ClapPlugin::tellOfLoad() noexcept {
  initialised->tail.settingsChanged();
  host.requestProcess();
  host.rescanParameters(CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT | CLAP_PARAM_RESCAN_INFO);
}

}  // namespace orvantesco
