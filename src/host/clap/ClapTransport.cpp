#include "host/clap/ClapTransport.h"

#include <cmath>

namespace orvantesco {
namespace {

constexpr double kFixedPoint = static_cast<double>(CLAP_BEATTIME_FACTOR);

/// Beyond this a double holds no multiple of 2^-31 but the number itself.
constexpr double kRoundable = 4194304.0;

constexpr double kSecondsPerMinute = 60.0;

}  // namespace

double ofFixedPoint(std::int64_t position) noexcept {
  return static_cast<double>(position) / kFixedPoint;
}

double roundedToFixedPoint(double position) noexcept {
  if (!(std::abs(position) < kRoundable)) return position;
  const double half = position < 0.0 ? -0.5 : 0.5;
  return static_cast<double>(static_cast<std::int64_t>(position * kFixedPoint + half)) /
         kFixedPoint;
}

void ClapTransport::take(const clap_event_transport_t* given, int frame) noexcept {
  event = given != nullptr ? *given : clap_event_transport_t{};
  eventFrame = frame;
  told = HostTimeInfo{};
  told.transportIsRunning = tells(CLAP_TRANSPORT_IS_PLAYING);
  told.transportLoopEnabled = tells(CLAP_TRANSPORT_IS_LOOP_ACTIVE);
  told.ppqPos = beatsTold();
  told.cycleStart = ofFixedPoint(event.loop_start_beats);
  told.cycleEnd = ofFixedPoint(event.loop_end_beats);
  seconds = secondsTold();
  if (!tells(CLAP_TRANSPORT_HAS_TIME_SIGNATURE)) return;
  told.numerator = event.tsig_num;
  told.denominator = event.tsig_denom;
}

double ClapTransport::tempoAt(int frame) const noexcept {
  if (!tells(CLAP_TRANSPORT_HAS_TEMPO)) return 0.0;
  return event.tempo + event.tempo_inc * (frame - eventFrame);
}

/// The sum of tempo + k * tempo_inc over the frames k = 0 .. frames - 1, in quarter notes.
double ClapTransport::beatsSince(int frames, double rateHz) const noexcept {
  if (!tells(CLAP_TRANSPORT_HAS_TEMPO)) return 0.0;
  const double n = frames;
  const double minutesOfTempo = event.tempo * n + event.tempo_inc * n * (n - 1.0) * 0.5;
  return minutesOfTempo / (kSecondsPerMinute * rateHz);
}

double ClapTransport::beatsTold() const noexcept {
  if (tells(CLAP_TRANSPORT_HAS_BEATS_TIMELINE)) return ofFixedPoint(event.song_pos_beats);
  const bool derivable = tells(CLAP_TRANSPORT_HAS_SECONDS_TIMELINE | CLAP_TRANSPORT_HAS_TEMPO);
  return derivable ? ofFixedPoint(event.song_pos_seconds) * event.tempo / kSecondsPerMinute : 0.0;
}

double ClapTransport::secondsTold() const noexcept {
  if (tells(CLAP_TRANSPORT_HAS_SECONDS_TIMELINE)) return ofFixedPoint(event.song_pos_seconds);
  const bool derivable = tells(CLAP_TRANSPORT_HAS_BEATS_TIMELINE | CLAP_TRANSPORT_HAS_TEMPO);
  return derivable && event.tempo > 0.0
             ? ofFixedPoint(event.song_pos_beats) * kSecondsPerMinute / event.tempo
             : 0.0;
}

void ClapTransport::writeAt(int frame, double rateHz, HostTimeInfo& time) const noexcept {
  time = told;
  time.tempo = tempoAt(frame);
  time.samplePos = seconds * rateHz;
  if (time.transportIsRunning) {
    const int played = frame - eventFrame;
    time.ppqPos += beatsSince(played, rateHz);
    time.samplePos += played;
  }
  time.ppqPos = roundedToFixedPoint(time.ppqPos);
}

}  // namespace orvantesco
