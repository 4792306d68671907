// The master effect: its choice, bypass, four knobs and level.

#include <cstddef>

#include "core/GlobalControls.h"
#include "core/MasterEffectScale.h"
#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

/// Whether a person has chosen the effect, not automation or a bulk operation.
bool chosenByUser(const ParamDispatch& change) {
  return !change.bulk() && change.editor().hasCommittedGesture(kMasterEffectSelector);
}

void takeDefaults(const ParamDispatch& change, int typeId) {
  const MasterEffectRecord* record = masterEffectRecord(typeId);
  if (record == nullptr) return;
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    change.changeValue(kMasterFxParam + knob, record->defaults[knob] * 100.0);
  }
}

void masterFx(ParamDispatch& change) {
  const int typeId = kMasterFxOff + change.choice;
  const bool byUser = chosenByUser(change);
  change.globals().masterFxType = typeId;
  if (byUser) {
    change.editor().lowerCommitFlag(kMasterEffectSelector);
    if (change.isOn()) takeDefaults(change, typeId);
  }
  change.postGlobal(kClearMasterSend);
  if (change.isOn()) change.postGlobal(kResetMasterEffect | kTakeMasterFxParams);
  change.editor().showMasterEffect(change.choice, typeId);
}

void masterFxBypass(ParamDispatch& change) {
  change.globals().masterFxBypass = change.isOn();
  change.postGlobal(kTakeMasterBypass);
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    change.editor().enableKnob(kMasterFxParam + knob, !change.isOn());
  }
}

void masterFxParam(ParamDispatch& change) {
  GlobalControls& globals = change.globals();
  const int menuPosition = globals.masterFxType - kMasterFxOff;
  globals.masterFxParam[static_cast<std::size_t>(change.member)] = change.percent();
  change.postGlobal(kTakeMasterFxParam << change.member);
  const MasterFxStyle style = masterFxStyle(menuPosition, change.member);
  change.show({style.caption, style.decimals, style.unit});
  change.shown = masterFxScale(menuPosition, change.member, change.percent()).shown;
  change.label = masterFxLabel(menuPosition, change.member, change.shown);
}

void masterFxLevel(ParamDispatch& change) { change.globals().masterFxLevel = change.percent(); }

constexpr DispatchFamily kTable[] = {
    {kMasterFx, 1, masterFx},
    {kMasterFxBypass, 1, masterFxBypass},
    {kMasterFxParam, 4, masterFxParam},
    {kMasterFxLevel, 1, masterFxLevel, {"MASTER FX OUT LEVEL "}},
};

}  // namespace

constinit const std::span<const DispatchFamily> masterFamilies{kTable};

}  // namespace orvantesco
