#pragma once

#include <array>

#include "fx/Shared.h"
#include "host/clap/ClapApi.h"

namespace orvantesco {

/// The layouts of audio ports that a host may choose among while the plug-in is deactivated: a main
/// input of one or two channels to a stereo output, with a mono side chain as second input or
/// without. A fresh instance has stereo and side chain.
class ClapPorts {
 public:
  struct Layout {
    clap_id id;
    const char* name;
    std::uint32_t mainInputs;
    bool sideChain;
  };
  static constexpr std::array<Layout, 4> layouts{{{0, "Stereo, side chain", 2, true},
                                                  {1, "Stereo", 2, false},
                                                  {2, "Mono to stereo, side chain", 1, true},
                                                  {3, "Mono to stereo", 1, false}}};

  const Layout& layout() const noexcept { return layouts[static_cast<std::size_t>(chosen)]; }

  /// False for an id that no layout has.
  bool select(clap_id id) noexcept;

  std::uint32_t count(bool isInput) const noexcept;
  /// False beyond the last port.
  bool describe(std::uint32_t place, bool isInput, clap_audio_port_info_t& info) const noexcept;
  /// False beyond the last layout.
  static bool describeLayout(std::uint32_t place, ClapAudioPortsConfig& config) noexcept;

 private:
  Shared<int> chosen{0};
};

}  // namespace orvantesco
