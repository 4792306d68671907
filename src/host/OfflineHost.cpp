#include "host/OfflineHost.h"

namespace orvantesco {

void OfflineHost::setSampleRate(double rateHz) noexcept {
  if (rateHz == rate) return;
  rebase();
  rate = rateHz;
}

void OfflineHost::setTempo(double beatsPerMinute) noexcept {
  if (beatsPerMinute == beatsPerMinuteNow) return;
  rebase();
  beatsPerMinuteNow = beatsPerMinute;
}

void OfflineHost::setTimeSignature(int numerator, int denominator) noexcept {
  numeratorNow = numerator;
  denominatorNow = denominator;
}

void OfflineHost::locate(double quarterNotes) noexcept {
  start = quarterNotes;
  framesPlayed = 0;
}

void OfflineHost::advance(int frames) noexcept {
  if (running) framesPlayed += frames;
}

void OfflineHost::transportAt(int frameInBlock, HostTimeInfo& info) const noexcept {
  const std::int64_t frame = framesPlayed + (running ? frameInBlock : 0);
  info = HostTimeInfo{};
  info.tempo = beatsPerMinuteNow;
  info.ppqPos = quarterNotesAt(frame);
  info.samplePos = start * 60.0 * rate / beatsPerMinuteNow + static_cast<double>(frame);
  info.numerator = numeratorNow;
  info.denominator = denominatorNow;
  info.transportIsRunning = running;
}

double OfflineHost::quarterNotesAt(std::int64_t frame) const noexcept {
  return start + static_cast<double>(frame) * beatsPerMinuteNow / (60.0 * rate);
}

/// Counts anew from the present position, so that a new speed does not move what has been played.
void OfflineHost::rebase() noexcept { locate(quarterNotesAt(framesPlayed)); }

}  // namespace orvantesco
