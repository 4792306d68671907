#pragma once

#include <string_view>

namespace orvantesco {

/// Positions of the "MasterFX" menu.
enum MasterFxMenu {
  kMasterOff,
  kMasterOrvant,
  kMasterReverb,
  kMasterRoom,
  kMasterFixEq,
  kMasterTwoBandEq,
  kMasterShelves,
  kMasterDrive,
  kMasterFxMenuEntries
};
inline constexpr int kMasterFxKnobs = 4;

/// What a knob of a master effect shows, and what its effect gets.
struct MasterFxValue {
  double shown = 0.0;
  double native = 0.0;
};

/// How a knob of a master effect is labelled.
struct MasterFxStyle {
  std::string_view caption{};
  int decimals = 2;
  std::string_view unit = " %";
};

/// Scales knob 0..3 of the master effect at a menu position; `x` is 0..1. Times of pre-delays are
/// native in samples at 44100 Hz, whatever the rate. At "OFF" and beyond the menu both values are
/// `x`, in percent where it is shown. Any thread.
MasterFxValue masterFxScale(int menuPosition, int knob, double x) noexcept;

/// Caption, decimals and unit of a knob; an empty caption at "OFF" and beyond the menu.
MasterFxStyle masterFxStyle(int menuPosition, int knob) noexcept;

/// The name that a knob shows in place of its number, empty where it shows the number.
std::string_view masterFxLabel(int menuPosition, int knob, double shown) noexcept;

}  // namespace orvantesco
