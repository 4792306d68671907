#pragma once

#include <array>

namespace orvantesco {

/// What every plug-in format tells a host about the effect. The ids stand in users' sessions and
/// never change.
struct PluginIdentity {
  static constexpr const char* name = "Orvantesco";
  static constexpr const char* vendor = "qlm-works";
  static constexpr const char* description = "Four-slot stereo delay with modulation and effects";
  static constexpr const char* version = "1.2.0";
  static constexpr int versionNumber = 0x10200;  ///< major, minor, patch in bytes 2, 1 and 0

  static constexpr const char* clapId = "com.qlm-works.orvantesco";
  static constexpr const char* lv2Uri = "urn:qlm-works:orvantesco";

  static constexpr const char* uniqueId = "OVsC";  ///< four characters

  static constexpr const char* category = "delay";
  static constexpr std::array<const char*, 3> features{"audio-effect", "delay", "stereo"};
};

}  // namespace orvantesco
