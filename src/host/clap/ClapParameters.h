#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "core/Orvantesco.h"
#include "host/clap/ChangeQueue.h"
#include "host/clap/ClapApi.h"

namespace orvantesco {

/// The parameters as a CLAP host knows them: those of the bank by their index, and behind them the
/// bypass, which belongs to the format and not to the effect.
///
/// A stepped parameter has its own whole numbers as values. Every other one has its position 0..1:
/// so the ends never move, although the rate of an LFO turns from Hz to notes, and a host's plain
/// knob runs along the parameter's curve.
class ClapParameters {
 public:
  /// Stands in users' sessions, and lies far from any index that a larger bank could come to.
  static constexpr clap_id bypassId = 0x10000;

  explicit ClapParameters(Orvantesco& owner) noexcept : effect(owner) {}
  ClapParameters(const ClapParameters&) = delete;
  ClapParameters& operator=(const ClapParameters&) = delete;

  /// Bank and bypass. Any thread, as all that follows but for the texts, which allocate.
  std::uint32_t count() const noexcept;

  /// Everything a host lists about the parameter at a place. False beyond the last.
  bool describe(std::uint32_t place, clap_param_info_t& info) const;

  /// Nothing for an id that is no parameter.
  std::optional<double> value(clap_id id) const noexcept;

  /// Writes the text that a person sees for a value, cut to the room. False for an id that is no
  /// parameter, a value that is no number, and where there is no room at all.
  bool writeText(clap_id id, double value, std::span<char> text) const;
  std::optional<double> valueOfText(clap_id id, const char* text) const;

  /// What became of a value that the host sent.
  enum class Taken {
    refused,  ///< no parameter, or no number
    asItWas,  ///< the parameter has it already: a host that brings back what it has read
    moved,
  };
  /// Takes no memory and no lock.
  Taken set(clap_id id, double value) noexcept;

  /// The value of a change that the plug-in tells the host.
  double valueOf(const HostChange& change) const noexcept;

  bool isBypassed() const noexcept { return bypassed; }
  void setBypassed(bool on) noexcept { bypassed = on; }

 private:
  IParam* find(clap_id id) const noexcept;
  static void describeBankParameter(int index, clap_param_info_t& info);

  Orvantesco& effect;
  Shared<bool> bypassed{false};
};

}  // namespace orvantesco
