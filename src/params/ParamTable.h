#pragma once

#include <span>
#include <string>
#include <string_view>

#include "params/IParam.h"
#include "params/Labels.h"

namespace orvantesco {

/// The defaults of a family: one for all members, or another one for the first.
struct FamilyDefault {
  constexpr FamilyDefault(double all) : first(all), others(all) {}  // NOLINT: reads like a number
  constexpr FamilyDefault(double firstMember, double otherMembers)
      : first(firstMember), others(otherMembers) {}
  double first;
  double others;
};

/// One row of the bank: what all members of a family share.
///
/// In a name pattern a word in braces stands for what changes from member to member m (from 0):
///   {n}      m + 1
///   {slot}   m % 4 + 1       {stage}  PR, FB, PO for m / 4, {place} the same spelled out
///   {lane}   m / 16 + 1      {step}   m % 16 + 1
///   {logic}  1, 3, 3, 4: the continuous parameters of the second logic unit bear the third
///            one's name, and presets know them by it
struct ParamFamily {
  int base;
  int count;
  const char* namePattern;
  ParamType type;
  FamilyDefault defaultValue;
  DoubleRange range;
  const char* unit;
  /// Empty where values are plain numbers; one list for all members, or one for each.
  std::span<const LabelList> labels;

  const LabelList* labelsOf(int member) const noexcept;
  double defaultOf(int member) const noexcept;
  std::string nameOf(int member) const;
};

/// A pattern with its words replaced for a member.
std::string nameOfMember(std::string_view pattern, int member);

/// All families in index order; together they cover 0 .. kNumParams - 1 exactly once.
std::span<const ParamFamily> paramFamilies() noexcept;

}  // namespace orvantesco
