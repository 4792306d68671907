#include "fx/EffectCatalogue.h"

#include <algorithm>
#include <array>

#include "fx/EffectPages.h"
#include "fx/FilterMode.h"
#include "fx/ShaperType.h"

namespace orvantesco {

namespace {

namespace pages = effect_pages;
using Class = EffectClass;

constexpr bool kNoMix = false;

// The two ids of a pair are one effect before or behind the delay and in its feedback path.
constexpr EffectRecord kRecords[] = {
    {0, "OFF", {}, "fxic_off", pages::kOff},
    {1, "FREQ SHIFT", {Class::hilbertShifter}, "fxic_frq", pages::kFrequencyShift},
    {2, "RING MOD", {Class::ringMod}, "fxic_rm", pages::kRingMod},
    {3, "PHASE", {Class::phaser}, "fxic_ph", pages::kPhaser},
    {4, "PITCH SHIFT", {Class::pitchShifter, 0}, "fxic_ps1", pages::kPitchShift},
    {5, "PITCH SHIFT ST", {Class::pitchShifter, 1}, "fxic_ps2", pages::kPitchShiftStereo},
    {6, "WAVE SHAPE", {Class::shaper, kShaperWaveShape}, "fxic_ws", pages::kWaveShape, kNoMix},
    {7, "", {Class::shaper, kShaperTube}, "", pages::kOff},
    {14, "SATURATE", {Class::shaper, kShaperSaturate}, "fxic_sat", pages::kShaper},
    {15, "SATURATE", {Class::shaper, kShaperSaturateFeedback}, "fxic_sat", pages::kShaperFeedback},
    {16, "RECTIFY", {Class::shaper, kShaperRectify}, "fxic_rect", pages::kShaper},
    {17, "RECTIFY", {Class::shaper, kShaperRectifyFeedback}, "fxic_rect", pages::kShaperFeedback},
    {18, "DESTROY", {Class::shaper, kShaperDestroy}, "fxic_dest", pages::kShaper},
    {19, "DESTROY", {Class::shaper, kShaperDestroyFeedback}, "fxic_dest", pages::kShaperFeedback},
    {20, "NOISE", {Class::shaper, kShaperNoise}, "fxic_nois", pages::kShaper},
    {21, "NOISE", {Class::shaper, kShaperNoiseFeedback}, "fxic_nois", pages::kShaperFeedback},
    {22, "LOFI II", {Class::lofi}, "fxic_lofi2", pages::kLofiTwo},
    {23, "LOFI I", {Class::shaper, kShaperLofi}, "fxic_lofi1", pages::kLofiOne},
    {24, "LOFI I", {Class::shaper, kShaperLofiFeedback}, "fxic_lofi1", pages::kLofiOneFeedback},
    {29, "MULTI SVF", {Class::stateVariable}, "fxic_svf", pages::kStateVariable},
    {30, "HP/LP 24dB", {Class::biquad, kSteepLowpassFilter, 4}, "fxic_cheb", pages::kSteep},
    {31, "MULTI 12dB", {Class::biquad, kLowpassFilter, 1}, "fxic_bt", pages::kMulti},
    {32, "MULTI 12dB", {Class::biquad, kSlopeFilter, 1}, "fxic_bt", pages::kMultiFeedback},
    {33, "PEAK", {Class::biquad, kPeakFilter, 2}, "fxic_pk", pages::kPeak},
    {34, "PHASEBP", {Class::phaseFilter, 5}, "fxic_phb", pages::kPhaseFilter},
    {35, "COMB", {Class::comb}, "fxic_comb", pages::kComb, kNoMix},
    {36, "VOWEL", {Class::biquad, kVowelFilter, 2}, "fxic_vow", pages::kVowel, kNoMix},
    {37, "COMPRESSOR", {Class::compressor}, "fxic_comp", pages::kCompressor, kNoMix},
    {56, "DRIVE LP+HP", {Class::filterPair}, "fxic_lphp", pages::kFilterPair},
    {57, "VARAIBLE LPHP", {Class::variableFilterPair}, "fxic_varilphp", pages::kVariablePair},
};

constexpr std::array kOuterIds{0, 1,  2,  3,  4,  5,  14, 16, 18, 20, 23, 22,
                               6, 29, 30, 31, 33, 56, 57, 34, 35, 36, 37};
constexpr std::array kFeedbackIds{0, 1, 2, 4, 5, 15, 17, 19, 21, 24, 22, 32, 56, 57, 37};

constexpr MasterEffectRecord kMasterRecords[] = {
    {38, "OFF"},
    {39, "ORVANT", {0.25, 0.5, 0.3, 0.4, 0.0}},
    {40, "REVERB", {0.4, 0.1, 0.2, 0.5, 0.0}},
    {41, "ROOM", {0.5, 0.1, 0.1, 0.2, 0.0}},
    {42, "FIX EQ", {0.5, 0.0, 0.5, 0.5, 0.0}},
    {43, "2 BAND EQ", {0.5, 0.25, 0.5, 0.65, 0.0}, {1.0, 4.0, 1.0, 4.0, 1.0}},
    {44, "LO/HI SHELF", {0.5, 0.25, 0.5, 0.5, 0.0}, {1.0, 1.0, 1.0, 2.0, 1.0}},
    {45, "DRIVE LP+HP", {0.0, 1.0, 0.0, 0.0, 0.0}},
};

constexpr FxParameter kNoParameter{};

}  // namespace

std::span<const int> effectTypeIds(EffectStage stage) noexcept {
  if (stage == EffectStage::feedback) return kFeedbackIds;
  return kOuterIds;
}

int effectTypeIdAt(EffectStage stage, int listIndex) noexcept {
  const auto ids = effectTypeIds(stage);
  if (listIndex < 0 || listIndex >= static_cast<int>(ids.size())) return -1;
  return ids[static_cast<std::size_t>(listIndex)];
}

int effectListIndex(EffectStage stage, int typeId) noexcept {
  const auto ids = effectTypeIds(stage);
  const auto found = std::find(ids.begin(), ids.end(), typeId);
  return found == ids.end() ? -1 : static_cast<int>(found - ids.begin());
}

const EffectRecord& effectRecord(int typeId) noexcept {
  const auto found =
      std::lower_bound(std::begin(kRecords), std::end(kRecords), typeId,
                       [](const EffectRecord& record, int id) { return record.id < id; });
  const bool exists = found != std::end(kRecords) && found->id == typeId;
  return exists ? *found : kRecords[0];
}

const FxParameter& fxParameter(int typeId, int paramIndex) noexcept {
  if (paramIndex < 0 || paramIndex >= kFxParamCount) return kNoParameter;
  return effectRecord(typeId).parameters[paramIndex];
}

FxReadout fxReadout(int typeId, int paramIndex) noexcept {
  const FxParameter& parameter = fxParameter(typeId, paramIndex);
  if (parameter.name[0] == '\0') return {};
  return {parameter.name, formatOfScale(parameter.scale), parameter.unit};
}

bool isBipolarFxParam(int typeId, int paramIndex) noexcept {
  return isBipolarScale(fxParameter(typeId, paramIndex).scale);
}

bool fifthParamIsMix(int typeId) noexcept { return effectRecord(typeId).fifthIsMix; }

const MasterEffectRecord* masterEffectRecord(int id) noexcept {
  if (id < kFirstMasterEffect || id > kLastMasterEffect) return nullptr;
  return &kMasterRecords[id - kFirstMasterEffect];
}

void fxParamScale(int fxType, int paramIndex, double* value, double* native) noexcept {
  const FxScaled scaled = scaleFxParam(fxParameter(fxType, paramIndex).scale, *value);
  *value = scaled.shown;
  *native = scaled.control;
}

}  // namespace orvantesco
