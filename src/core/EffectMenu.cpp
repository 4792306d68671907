#include "core/EffectMenu.h"

#include <array>
#include <vector>

#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

using Menu = std::vector<const char*>;

Menu menuOf(EffectStage stage) {
  Menu menu;
  for (const int typeId : effectTypeIds(stage)) menu.push_back(effectRecord(typeId).menuName);
  return menu;
}

}  // namespace

LabelList effectMenuOf(int paramIndex) {
  static const std::array<Menu, numStages> menus{
      menuOf(EffectStage::pre), menuOf(EffectStage::feedback), menuOf(EffectStage::post)};
  if (!isFxType(paramIndex)) return {};
  return menus[static_cast<std::size_t>((paramIndex - kFxTypePre) / numSlots)];
}

}  // namespace orvantesco
