#include "params/dispatch/DispatchFamily.h"

#include <array>
#include <cstddef>

#include "params/ParamIndex.h"

namespace orvantesco {

namespace {

class FamilyIndex {
 public:
  FamilyIndex() {
    for (const auto& table :
         {slotFamilies, slotGainFamilies, effectFamilies, delayFamilies, delayTimeFamilies,
          tapFamilies, grainFamilies, laneFamilies, lfoFamilies, gateFamilies, envelopeFamilies,
          logicFamilies, masterFamilies, globalFamilies}) {
      for (const DispatchFamily& family : table) enter(family);
    }
  }

  const DispatchFamily* at(int paramIdx) const noexcept {
    const bool known = paramIdx >= 0 && paramIdx < kNumParams;
    return known ? families[static_cast<std::size_t>(paramIdx)] : nullptr;
  }

 private:
  void enter(const DispatchFamily& family) noexcept {
    for (int member = 0; member < family.count; ++member) {
      const int index = family.base + member;
      families[static_cast<std::size_t>(index)] = &family;
    }
  }

  std::array<const DispatchFamily*, kNumParams> families{};
};

}  // namespace

const DispatchFamily* dispatchFamilyOf(int paramIdx) noexcept {
  static const FamilyIndex index;
  return index.at(paramIdx);
}

}  // namespace orvantesco
