#include "model/DelayModel.h"

#include <algorithm>
#include <cmath>

namespace orvantesco::model {

DelayModel::DelayModel(const Rates& theRates)
    : rates(theRates),
      length(theRates.ringLength()),
      lowpass(EchoFilter::Kind::lowpass, theRates.clamped),
      highpass(EchoFilter::Kind::highpass, theRates.clamped) {
  for (Glide& glide : tapGlide) glide.setTime(100.0, rates.clamped);
  grainSizeGlide.setTime(10.0, rates.clamped);
  freshTap.fill(true);
}

void DelayModel::setMode(DelayMode newMode) {
  mode = newMode;
  reset();
}

void DelayModel::reset() {
  written.clear();
  reverseCount = 0;
  grainPos = 0.0;
  lowpass.reset();
  highpass.reset();
  tapMemory.fill(0.0);
  clearTapMemory();
}

void DelayModel::setLowpassHz(double hz) {
  lowpass.setCorner(hz / rates.clamped);
  lowpassActive = hz / rates.clamped < 20000.0 / rates.clamped;
}

void DelayModel::setHighpassHz(double hz) {
  highpass.setCorner(hz / rates.clamped);
  highpassActive = hz / rates.clamped > 20.0 / rates.clamped;
}

double DelayModel::ringAt(long position) const {
  const long newest = static_cast<long>(written.size()) - 1;
  if (position > newest) return 0.0;
  const long laps = (newest - position) / length;
  return written[static_cast<size_t>(position + laps * length)];
}

void DelayModel::write(const Block& samples) {
  written.insert(written.end(), samples.begin(), samples.end());
}

Block DelayModel::readRaw(double delaySamples) const {
  const long back = std::min(static_cast<long>(delaySamples), length - kStep);
  long start = writePos() - back - kStep;
  if (start < 0) start += length;
  Block out{};
  for (int i = 0; i < kStep; ++i) out[static_cast<size_t>(i)] = ringAt((start + i) % length);
  return out;
}

Block DelayModel::read(double delaySamples, int tap) {
  const double wanted = static_cast<double>(static_cast<float>(delaySamples));
  const double limited = std::clamp(wanted, rates.minDelay(), static_cast<double>(length - 1));
  const double target = static_cast<double>(static_cast<float>(limited));
  if (snapGlide) {
    tapGlide[static_cast<size_t>(tap)].y = target;
    freshTap[static_cast<size_t>(tap)] = true;
    snapGlide = false;
  }
  if (mode == DelayMode::backward) return readReverse(target);
  if (mode == DelayMode::grain) return readGrain(target);
  Block out = readTap(target, tap);
  if (mode == DelayMode::tapped) return out;
  if (highpassActive) highpass.process(out);
  if (lowpassActive) lowpass.process(out);
  return out;
}

Block DelayModel::readTap(double target, int tap) {
  Glide& glide = tapGlide[static_cast<size_t>(tap)];
  Block delay = glide.ramp(target);
  if (std::abs(glide.y - target) <= 1e-9 * target) {
    glide.y = target;
    delay.fill(target);
  }
  double& memory = tapMemory[static_cast<size_t>(tap)];
  Block out{};
  for (int i = 0; i < kStep; ++i) {
    const double d = delay[static_cast<size_t>(i)];
    const long whole = static_cast<long>(d);
    const double f = d - static_cast<double>(whole);
    long p = i - whole + writePos();
    if (p < 0) p += length;
    if (p >= length) p = 0;
    const long q = p > 0 ? p - 1 : length - 1;
    if (freshTap[static_cast<size_t>(tap)]) memory = ringAt(q);
    freshTap[static_cast<size_t>(tap)] = false;
    memory = (ringAt(p) - memory) * (1.0 - f) / (1.0 + f) + ringAt(q);
    out[static_cast<size_t>(i)] = memory;
  }
  return out;
}

}  // namespace orvantesco::model
