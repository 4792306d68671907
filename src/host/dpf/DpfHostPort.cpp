#include "host/dpf/DpfHostPort.h"

#include <cmath>

namespace orvantesco {
namespace {

constexpr double secondsPerMinute = 60.0;

/// In quarter notes a minute: so VST3 has it, and so hosts of LV2 tell it, in a meter of eighths
/// too.
bool isTempo(double beatsPerMinute) noexcept {
  return std::isfinite(beatsPerMinute) && beatsPerMinute > 0.0;
}

/// Quarter notes since bar 1. The wrapper counts bars and beats from 1.
double quarterNotesOf(const DISTRHO::TimePosition::BarBeatTick& bbt) noexcept {
  const double beats = (bbt.bar - 1.0) * static_cast<double>(bbt.beatsPerBar) + (bbt.beat - 1.0) +
                       bbt.tick / bbt.ticksPerBeat;
  return beats * 4.0 / static_cast<double>(bbt.beatType);
}

bool hasMusicalPosition(const DISTRHO::TimePosition::BarBeatTick& bbt) noexcept {
  return bbt.valid && bbt.ticksPerBeat > 0.0 && bbt.beatsPerBar > 0.0F && bbt.beatType > 0.0F;
}

}  // namespace

void DpfHostPort::takePosition(const DISTRHO::TimePosition& position) noexcept {
  const auto& bbt = position.bbt;
  if (isTempo(bbt.beatsPerMinute)) atBlockStart.tempo = bbt.beatsPerMinute;
  if (hasMusicalPosition(bbt)) {
    atBlockStart.numerator = static_cast<int>(std::lround(bbt.beatsPerBar));
    atBlockStart.denominator = static_cast<int>(std::lround(bbt.beatType));
  }
  atBlockStart.samplePos = static_cast<double>(position.frame);
  atBlockStart.ppqPos = quarterNotesAt(position);
  atBlockStart.transportIsRunning = position.playing;
}

/// A host without bars and beats, such as a JACK server without a master of time, still counts
/// frames.
double DpfHostPort::quarterNotesAt(const DISTRHO::TimePosition& position) const noexcept {
  if (hasMusicalPosition(position.bbt)) return quarterNotesOf(position.bbt);
  return atBlockStart.samplePos * atBlockStart.tempo / (secondsPerMinute * rate);
}

void DpfHostPort::transportAt(int frameInBlock, HostTimeInfo& info) const noexcept {
  info = atBlockStart;
  if (!info.transportIsRunning) return;
  info.samplePos += frameInBlock;
  info.ppqPos += frameInBlock * info.tempo / (secondsPerMinute * rate);
}

}  // namespace orvantesco
