#include "master/MasterEffectFactory.h"

#include "fx/LPHP_ST.h"
#include "master/AFdnReverb.h"
#include "master/Ambience.h"
#include "master/EQ_ST.h"

namespace orvantesco {

std::unique_ptr<DSPShell> createMasterEffect(int index) {
  switch (index) {
    case 0:
      return std::make_unique<Ambience>();
    case 1:
      return std::make_unique<AFdnReverb>(16, 7, 1);
    case 2:
      return std::make_unique<AFdnReverb>(10, 2, 4);
    case 3:
    case 4:
    case 5:
      return std::make_unique<EQ_ST>(index - 3);
    case 6:
      return std::make_unique<LPHP_ST>();
    default:
      return nullptr;
  }
}

}  // namespace orvantesco
