#pragma once

#include "master/AFdnReverb.h"
#include "master/FdnModel.h"

namespace orvantesco::testing_support {

struct FdnLayout {
  int lines;
  int modulated;
  int layout;
};

/// "REVERB" and "ROOM".
inline const FdnLayout kFdnLayouts[] = {{16, 7, 1}, {10, 2, 4}};

inline void apply(const FdnSetting& setting, AFdnReverb& reverb) {
  reverb.setParam(0, setting.decaySeconds);
  reverb.setParam(1, setting.preDelay);
  reverb.setParam(2, setting.highPass);
  reverb.setParam(3, setting.damping);
}

inline Stereo sounded(const FdnLayout& layout, const FdnSetting& setting, const Stereo& in) {
  AFdnReverb reverb(layout.lines, layout.modulated, layout.layout);
  apply(setting, reverb);
  return runStereo(reverb, in);
}

}  // namespace orvantesco::testing_support
