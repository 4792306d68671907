#pragma once

#include <gtest/gtest.h>

#include <string>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"
#include "support/RecordingEditor.h"

namespace orvantesco {

/// An effect without audio, whose editor records; all requests of the construction are dropped.
class DispatchRig : public ::testing::Test {
 protected:
  DispatchRig() {
    rig.effect.setEditor(&editor);
    probe.settle();
  }

  /// A change as host automation brings it.
  void set(int paramIdx, double value) { rig.set(paramIdx, value); }

  /// A change by the user, whose hand stays on the control.
  void move(int paramIdx, double value) {
    rig.effect.touchParameter(paramIdx);
    rig.set(paramIdx, value);
  }

  /// A choice in the type selector of a position.
  void chooseEffect(int position, int listIndex) {
    editor.committed[static_cast<std::size_t>(position)] = true;
    rig.set(kFxTypePre + position, listIndex);
  }

  double valueOf(int paramIdx) const { return rig.effect.GetParam(paramIdx)->value(); }

  /// "caption|value|unit" of the last read-out, empty if there was none.
  std::string readout() const {
    const auto all = editor.linesOf("showReadout");
    if (all.empty()) return {};
    const std::string& line = all.back();
    const auto begin = line.find(' ', line.find(' ') + 1) + 1;
    const auto stage = line.rfind('|', line.rfind('|') - 1);
    return line.substr(begin, stage - begin);
  }

  RecordingEditor editor;
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
};

}  // namespace orvantesco
