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
  return std::round(position * kFixedPoint) / kFixedPoint;
}

void ClapTransport::take(const clap_event_transport_t* told, int frame) noexcept {
  event = told != nullptr ? *told : clap_event_transport_t{};
  eventFrame = frame;
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

HostTimeInfo ClapTransport::at(int frame, double rateHz) const noexcept {
  HostTimeInfo time;
  time.transportIsRunning = tells(CLAP_TRANSPORT_IS_PLAYING);
  time.transportLoopEnabled = tells(CLAP_TRANSPORT_IS_LOOP_ACTIVE);
  const int played = time.transportIsRunning ? frame - eventFrame : 0;
  time.tempo = tempoAt(frame);
  time.ppqPos = roundedToFixedPoint(beatsTold() + beatsSince(played, rateHz));
  time.samplePos = secondsTold() * rateHz + played;
  time.cycleStart = ofFixedPoint(event.loop_start_beats);
  time.cycleEnd = ofFixedPoint(event.loop_end_beats);
  if (tells(CLAP_TRANSPORT_HAS_TIME_SIGNATURE)) {
    time.numerator = event.tsig_num;
    time.denominator = event.tsig_denom;
  }
  return time;
}

}  // namespace orvantesco
