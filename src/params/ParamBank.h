#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "params/IParam.h"
#include "params/Labels.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// The names of all parameters without white space, in index order: what preset files store.
/// Five pairs are equal, since the second logic unit bears the third one's name.
using ParamKeys = std::vector<std::string>;

/// The flat bank of all parameters: what a user, a preset or a host can change is one of them.
///
/// A bank is born with 1095 empty records; `buildParameterBank` gives them their contents, once,
/// before it is shared. From then on every operation here is safe on any thread (see `IParam`).
class ParamBank {
 public:
  ParamBank();
  ParamBank(const ParamBank&) = delete;
  ParamBank& operator=(const ParamBank&) = delete;

  /// Fills every record from the table of families, and then the keys.
  void buildParameterBank();

  /// The record of a parameter, null for an index out of range.
  IParam* getParam(int index) noexcept;
  const IParam* getParam(int index) const noexcept;

  /// Makes a record an enum over a list, whose texts it takes. Part of building.
  struct EnumChoice {
    LabelList labels;
    int defaultValue = 0;
    KeepValue keep = KeepValue::no;
  };
  void addEnum(int index, const ParamCaption& caption, const EnumChoice& choice);

  /// Lets `kLfoRate` of an LFO (0..3) speak of notes or of Hz; its value stays. In tempo mode it is
  /// one of the eight notes of `LfoRateSyncLabels`, in whole steps, and is called "LFO Sync n".
  /// Any thread, the audio thread too.
  void setLfoRateInNotes(int lfo, bool inNotes) noexcept;

  /// Empty until the bank is built. A key stays when its record changes its form.
  const ParamKeys& keys() const noexcept { return paramKeys; }

 private:
  void addNoteFormOfLfoRate(int lfo);

  std::unique_ptr<std::array<IParam, kNumParams>> records;
  ParamKeys paramKeys;
};

}  // namespace orvantesco
