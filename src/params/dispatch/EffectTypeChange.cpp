#include "params/dispatch/EffectTypeChange.h"

#include <memory>
#include <mutex>
#include <new>

#include "core/EffectPosition.h"
#include "core/EffectSetup.h"
#include "core/EngineRate.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"
#include "params/ParamBank.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

/// Holds the audio thread off the effects of a stage.
class StageBusy {
 public:
  StageBusy(const ParamDispatch& owner, int number) : change(owner), stage(number) {
    change.setStageBusy(stage, true);
  }
  ~StageBusy() { change.setStageBusy(stage, false); }
  StageBusy(const StageBusy&) = delete;
  StageBusy& operator=(const StageBusy&) = delete;

 private:
  const ParamDispatch& change;
  int stage;
};

/// A change of type at one position.
class TypeChange {
 public:
  explicit TypeChange(ParamDispatch& owner)
      : change(owner),
        number(owner.paramIdx - kFxTypePre),
        position(owner.position(number)),
        typeId(effectTypeIdAt(stageName(), owner.choice)) {}

  bool isOffered() const { return typeId >= 0; }

  /// The bank's value back to the type that runs.
  void refuse() {
    change.storeValue(change.paramIdx, effectListIndex(stageName(), position.type));
    change.editor().redraw(change.paramIdx);
  }

  void carryOut() {
    auto instances = build();
    position.type = typeId;
    if (!change.bulk()) takeDefaults();
    configureInstances(*instances, {position, change.slot(slot()).controls, isPost()});
    position.handOver(std::move(instances));
    // What changed while the instances were being built reaches them behind the hand-over.
    position.requests.post(kTakeAllEffectParams | kTakeAllEffectSources | kTakeEffectSwitch);
    if (isPost()) renameTapSelectors();
    show();
  }

 private:
  int stage() const { return number / numSlots; }
  int slot() const { return number % numSlots; }
  bool isPost() const { return stage() == kStagePO; }
  EffectStage stageName() const { return static_cast<EffectStage>(stage()); }

  std::unique_ptr<EffectInstances> build() const {
    auto instances = std::make_unique<EffectInstances>();
    instances->typeId = typeId;
    instances->builtAtRate = engineRate();
    const int pairs = isPost() ? TapControls::kSteps : 1;
    for (int pair = 0; pair < pairs; ++pair) {
      auto left = createEffect(typeId, false, nullptr);
      if (left == nullptr) break;
      auto right = createEffect(typeId, true, left.get());
      instances->list.push_back(std::move(left));
      instances->list.push_back(std::move(right));
    }
    std::uint32_t seed = position.noiseSeed;
    for (const auto& instance : instances->list) seedEffect(*instance, seed++);
    return instances;
  }

  /// A person's choice starts from the type's own settings, without modulation.
  void takeDefaults() {
    for (int p = 0; p < kEffectParams; ++p) {
      const auto cell = static_cast<std::size_t>(p);
      const double initial = fxParameter(typeId, p).initial;
      position.value[cell] = initial;
      position.depth[cell] = 0.0;
      position.source[cell] = nullptr;
      const int valueIdx = fxParamIndex(p, FxParamKind::value, number);
      change.moveKnob(valueIdx, initial * 100.0);
      change.moveKnob(fxParamIndex(p, FxParamKind::modDepth, number), 0.0);
      change.moveKnob(fxParamIndex(p, FxParamKind::modSource, number), 0.0);
      change.editor().showModulationDepth(valueIdx, 0.0);
      change.editor().setRing(valueIdx, RingColour::None, false);
    }
  }

  /// The menus that choose what the step rows drive offer the parameters of the new type.
  void renameTapSelectors() {
    for (const int selector : {kTapFxParam1 + slot(), kTapFxParam2 + slot()}) {
      for (int p = 0; p < kEffectParams; ++p) {
        const int entry = p + 1;
        const char* plainName = TapFxParamLabels[static_cast<std::size_t>(entry)];
        change.param(selector).replaceDisplayText(
            entry, typeId == kNoEffect ? plainName : fxParameter(typeId, p).name);
      }
      if (change.touched() && !change.bulk()) change.moveKnob(selector, 0.0);
      if (!change.bulk()) change.dispatch(selector);
    }
    change.editor().refreshTapSelectors(slot());
  }

  void show() {
    if (typeId == kNoEffect) {
      for (int p = 0; p < kEffectParams; ++p) {
        change.editor().setRing(fxParamIndex(p, FxParamKind::value, number), RingColour::None,
                                false);
      }
    }
    change.editor().showEffect(number, typeId);
    change.editor().refreshEffect(number);
  }

  ParamDispatch& change;
  int number;
  EffectPosition& position;
  int typeId;
};

}  // namespace

void changeEffectType(ParamDispatch& change) {
  const int number = change.paramIdx - kFxTypePre;
  if (!change.typeMayChange(number)) return;
  const std::lock_guard lock(change.typeMutex());
  change.editor().lowerCommitFlag(number);
  const StageBusy busy(change, number / numSlots);
  TypeChange type(change);
  if (!type.isOffered()) {
    type.refuse();
    return;
  }
  try {
    type.carryOut();
  } catch (const std::bad_alloc&) {
    type.refuse();
  }
}

}  // namespace orvantesco
