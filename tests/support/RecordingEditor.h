#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/EditorPort.h"

namespace orvantesco {

/// An editor that shows nothing: it writes down every call as a line of text, such as
/// "setKnobValue 340 0.5", for tests to look at. Any thread.
class RecordingEditor : public EditorPort {
 public:
  /// Positions whose selectors hold a choice that has not been taken yet.
  std::array<bool, kMasterEffectSelector + 1> committed{};

  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex);
    return recorded;
  }

  bool saw(std::string_view line) const {
    const auto all = lines();
    return std::find(all.begin(), all.end(), line) != all.end();
  }

  /// The lines of one operation.
  std::vector<std::string> linesOf(std::string_view operation) const {
    std::vector<std::string> found;
    for (const std::string& line : lines()) {
      if (line.substr(0, line.find(' ')) == operation) found.push_back(line);
    }
    return found;
  }

  void clear() {
    const std::lock_guard lock(mutex);
    recorded.clear();
  }

  void showReadout(int paramIdx, const Readout& r) noexcept override {
    note("showReadout", paramIdx, r.caption, '|', r.value, '|', r.unit, '|', r.stage, '|', r.slot);
  }
  void showBeats(std::string_view text) noexcept override { note("showBeats", text); }
  void flashKnobValue(int paramIdx, std::string_view text, double seconds) noexcept override {
    note("flashKnobValue", paramIdx, text, seconds);
  }
  void setKnobValue(int paramIdx, double normalized) noexcept override {
    note("setKnobValue", paramIdx, normalized);
  }
  void showKnobPosition(int paramIdx, double normalized) noexcept override {
    note("showKnobPosition", paramIdx, normalized);
  }
  void enableKnob(int paramIdx, bool enabled) noexcept override {
    note("enableKnob", paramIdx, enabled);
  }
  void setKnobText(int paramIdx, std::string_view text) noexcept override {
    note("setKnobText", paramIdx, text);
  }
  void setRing(int paramIdx, RingColour colour, bool shown) noexcept override {
    static constexpr std::string_view kNames[] = {"None", "Lfo", "Gate", "Envelope", "Logic"};
    note("setRing", paramIdx, kNames[static_cast<int>(colour)], shown);
  }
  void showModulationDepth(int paramIdx, double depth) noexcept override {
    note("showModulationDepth", paramIdx, depth);
  }
  void setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept override {
    note("setKnobSteps", paramIdx, steps, defaultPosition);
  }
  void redraw(int paramIdx) noexcept override { note("redraw", paramIdx); }
  void showEffect(int position, int typeId) noexcept override {
    note("showEffect", position, typeId);
  }
  void refreshEffect(int position) noexcept override { note("refreshEffect", position); }
  void enableEffect(int position, bool enabled) noexcept override {
    note("enableEffect", position, enabled);
  }
  void refreshTapSelectors(int slot) noexcept override { note("refreshTapSelectors", slot); }
  void showMasterEffect(int menuPosition, int typeId) noexcept override {
    note("showMasterEffect", menuPosition, typeId);
  }
  bool hasCommittedGesture(int position) noexcept override {
    return committed[static_cast<std::size_t>(position)];
  }
  void lowerCommitFlag(int position) noexcept override {
    committed[static_cast<std::size_t>(position)] = false;
    note("lowerCommitFlag", position);
  }
  void enableSlotPage(int slot, bool enabled) noexcept override {
    note("enableSlotPage", slot, enabled);
  }
  void showDelayParts(int slot, bool shown) noexcept override {
    note("showDelayParts", slot, shown);
  }
  void refreshSlot(int slot) noexcept override { note("refreshSlot", slot); }
  void showSends(int slot, bool shown) noexcept override { note("showSends", slot, shown); }
  void showPage(int page) noexcept override { note("showPage", page); }
  void showLanes(int slot, bool shown) noexcept override { note("showLanes", slot, shown); }
  void refreshLanes(int slot) noexcept override { note("refreshLanes", slot); }
  void setLaneGrid(int paramIdx, int steps) noexcept override {
    note("setLaneGrid", paramIdx, steps);
  }
  void refreshModulator(ModulatorGroup group, int number) noexcept override {
    static constexpr std::string_view kNames[] = {"Lfo", "Gate", "Envelope", "Logic"};
    note("refreshModulator", kNames[static_cast<int>(group)], number);
  }
  void showPresetName(std::string_view text) noexcept override { note("showPresetName", text); }
  void showPresetFolder(std::string_view text) noexcept override { note("showPresetFolder", text); }
  void showAttenuation(double position) noexcept override { note("showAttenuation", position); }
  void showDryLock(bool locked) noexcept override { note("showDryLock", locked); }
  void showColourSet(int set) noexcept override { note("showColourSet", set); }
  void refreshStepGrids() noexcept override { note("refreshStepGrids"); }
  void closeStepViews() noexcept override { note("closeStepViews"); }
  void runDisplayTimers() noexcept override { note("runDisplayTimers"); }
  void showMessage(std::string_view text) noexcept override { note("showMessage", text); }

 private:
  static std::string text(std::string_view value) { return std::string(value); }
  static std::string text(char value) { return std::string(1, value); }
  static std::string text(bool value) { return value ? "yes" : "no"; }
  static std::string text(int value) { return std::to_string(value); }
  static std::string text(double value) {
    std::array<char, 40> out{};
    std::snprintf(out.data(), out.size(), "%.10g", value);
    return out.data();
  }

  template <class... Args>
  void note(std::string_view operation, const Args&... args) {
    std::string line(operation);
    ((line += (isBar(args) || endsInBar(line) ? "" : " ") + text(args)), ...);
    const std::lock_guard lock(mutex);
    recorded.push_back(std::move(line));
  }

  // Texts between bars stand without blanks around them, so that their own blanks can be seen.
  template <class Arg>
  static bool isBar(const Arg&) {
    return std::is_same_v<Arg, char>;
  }
  static bool endsInBar(const std::string& line) { return line.back() == '|'; }

  mutable std::mutex mutex;
  std::vector<std::string> recorded;
};

}  // namespace orvantesco
