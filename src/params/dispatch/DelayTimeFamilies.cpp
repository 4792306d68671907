// The delay times of a slot: timebase, factors, milliseconds, and the link of the two sides.

#include <array>
#include <cstddef>

#include "params/ParamIndex.h"
#include "params/dispatch/BeatsReadout.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr int kTimebaseMs = 0;

constexpr std::array<std::string_view, 11> kTimebaseShort{
    "", "/8", "/16", "/32", "/64", "/8d", "/16d", "/32d", "/8t", "/16t", "/32t"};

bool inTable(int timebase) {
  return timebase >= 0 && timebase < static_cast<int>(kTimebaseShort.size());
}

/// With the link on, the side that the user moves takes the other one along.
void moveLinkedSide(ParamDispatch& change, int otherSide) {
  const bool linked = change.choiceOf(kDelayLRLink + change.member) != 0;
  if (linked && change.touched() && !change.bulk()) change.changeValue(otherSide, change.value);
}

void timebase(ParamDispatch& change) {
  DelayControls& delay = change.controls().delay;
  if (!inTable(change.choice)) return;
  const bool fromNotes = delay.timebase != kTimebaseMs;
  delay.timebase = change.choice;
  if (change.choice != kTimebaseMs) {
    change.dispatch(kDelayFactorL + change.member);
    change.dispatch(kDelayFactorR + change.member);
  } else if (fromNotes && !change.bulk()) {
    for (const int knob : {kDelayTimeL + change.member, kDelayTimeR + change.member}) {
      change.editor().showKnobPosition(knob, change.param(knob).getNormalized());
    }
  }
  change.slot().requests.post(kSnapTapGlide);
  change.editor().refreshSlot(change.member);
}

/// The side jumps to its new time. The other one is left alone: a jump starts the memory of the
/// interpolation anew, which would be heard as a click.
void takeFactor(ParamDispatch& change, unsigned jumpOfSide, int otherSide) {
  const int base = change.controls().delay.timebase;
  change.unit = kTimebaseShort[static_cast<std::size_t>(base)];
  change.slot().requests.post(jumpOfSide);
  moveLinkedSide(change, otherSide + change.member);
}

void factorL(ParamDispatch& change) {
  change.controls().delay.factorL = change.value;
  takeFactor(change, kClearTapMemoryLeft | kSnapTapGlideLeft, kDelayFactorR);
}

void factorR(ParamDispatch& change) {
  change.controls().delay.factorR = change.value;
  takeFactor(change, kClearTapMemoryRight | kSnapTapGlideRight, kDelayFactorL);
}

double takeTime(ParamDispatch& change, int otherSide) {
  if (change.value < 10.0) change.decimals = 2;
  showBeatsOf(change);
  moveLinkedSide(change, otherSide + change.member);
  return change.value * 0.001;
}

void timeL(ParamDispatch& change) { change.controls().delay.timeL = takeTime(change, kDelayTimeR); }

void timeR(ParamDispatch& change) { change.controls().delay.timeR = takeTime(change, kDelayTimeL); }

/// The right side snaps to the left one. A bulk operation brings both sides as they were saved.
void link(ParamDispatch& change) {
  if (!change.isOn() || change.bulk()) return;
  const bool inMs = change.controls().delay.timebase == kTimebaseMs;
  const int left = (inMs ? kDelayTimeL : kDelayFactorL) + change.member;
  change.touch(left);
  change.dispatch(left);
}

constexpr DispatchFamily kTable[] = {
    {kTimebase, 4, timebase},
    {kDelayFactorL, 4, factorL, {"DELAY TIME LEFT", 0, ""}},
    {kDelayFactorR, 4, factorR, {"DELAY TIME RIGHT", 0, ""}},
    {kDelayTimeL, 4, timeL, {"DELAY TIME LEFT", 1, " ms"}},
    {kDelayTimeR, 4, timeR, {"DELAY TIME RIGHT", 1, " ms"}},
    {kDelayLRLink, 4, link},
};

}  // namespace

constinit const std::span<const DispatchFamily> delayTimeFamilies{kTable};

}  // namespace orvantesco
