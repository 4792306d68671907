#include "host/clap/ClapTransport.h"

#include <cmath>

namespace orvantesco {
namespace {

constexpr double kFixedPoint = static_cast<double>(CLAP_BEATTIME_FACTOR);

/// Beyond this a double holds no multiple of 2^-31 but the number itself.
constexpr double kRoundable = 4194304.0;

constexpr double kSecondsPerMinute = 60.0;

/// What an event of the host says; one that is missing says nothing.
class Told {
 public:
  explicit Told(const clap_event_transport_t* given) noexcept
      : event(given), flags(given != nullptr ? given->flags : 0) {}

  double tempo() const noexcept { return has(CLAP_TRANSPORT_HAS_TEMPO) ? event->tempo : 0.0; }
  double tempoIncrement() const noexcept {
    return has(CLAP_TRANSPORT_HAS_TEMPO) ? event->tempo_inc : 0.0;
  }

  double beats() const noexcept {
    if (has(CLAP_TRANSPORT_HAS_BEATS_TIMELINE)) return ofFixedPoint(event->song_pos_beats);
    const bool derivable = has(CLAP_TRANSPORT_HAS_SECONDS_TIMELINE | CLAP_TRANSPORT_HAS_TEMPO);
    return derivable ? ofFixedPoint(event->song_pos_seconds) * event->tempo / kSecondsPerMinute
                     : 0.0;
  }

  double seconds() const noexcept {
    if (has(CLAP_TRANSPORT_HAS_SECONDS_TIMELINE)) return ofFixedPoint(event->song_pos_seconds);
    const bool derivable = has(CLAP_TRANSPORT_HAS_BEATS_TIMELINE | CLAP_TRANSPORT_HAS_TEMPO);
    return derivable && event->tempo > 0.0
               ? ofFixedPoint(event->song_pos_beats) * kSecondsPerMinute / event->tempo
               : 0.0;
  }

  /// All that needs no rate.
  void write(HostTimeInfo& info) const noexcept {
    info = HostTimeInfo{};
    if (event == nullptr) return;
    info.transportIsRunning = has(CLAP_TRANSPORT_IS_PLAYING);
    info.transportLoopEnabled = has(CLAP_TRANSPORT_IS_LOOP_ACTIVE);
    info.ppqPos = beats();
    info.cycleStart = ofFixedPoint(event->loop_start_beats);
    info.cycleEnd = ofFixedPoint(event->loop_end_beats);
    if (!has(CLAP_TRANSPORT_HAS_TIME_SIGNATURE)) return;
    info.numerator = event->tsig_num;
    info.denominator = event->tsig_denom;
  }

 private:
  bool has(std::uint32_t what) const noexcept { return (flags & what) == what; }

  const clap_event_transport_t* event;
  std::uint32_t flags;
};

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
  const Told event(given);
  eventFrame = frame;
  tempo = event.tempo();
  tempoIncrement = event.tempoIncrement();
  seconds = event.seconds();
  event.write(told);
}

/// The sum of tempo + k * tempoIncrement over the frames k = 0 .. frames - 1, in quarter notes.
double ClapTransport::beatsSince(int frames, double rateHz) const noexcept {
  const double n = frames;
  const double minutesOfTempo = tempo * n + tempoIncrement * n * (n - 1.0) * 0.5;
  return minutesOfTempo / (kSecondsPerMinute * rateHz);
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
