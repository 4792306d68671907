#pragma once

namespace orvantesco {

/// Ring memory of a delay line, in doubles, with a reset that costs the same for a millisecond as
/// for eight seconds.
///
/// The ring remembers how far it has been written since the last reset and answers every read
/// beyond that with zeros, so nothing is ever cleared and pages of memory that no sample has
/// reached are never touched. Until the first turn is complete the written part is the range
/// [0, writePosition()); from then on it is the whole ring.
///
/// Behind its last sample the ring keeps a copy of its first `kGuard` samples, so that a span
/// that begins anywhere in the ring can be read in one piece.
///
/// Indices are ring positions 0..length()-1 unless a parameter says otherwise. Audio thread only,
/// except `allocate`.
class DelayRing {
 public:
  static constexpr int kGuard = 32;

  DelayRing() = default;
  ~DelayRing();
  DelayRing(const DelayRing&) = delete;
  DelayRing& operator=(const DelayRing&) = delete;

  /// Replaces the memory by one of `samples` doubles (at least 2 * kGuard are kept) and resets.
  /// Throws std::bad_alloc, and is then an unchanged ring.
  void allocate(int samples);

  /// Forgets everything that was written; takes the same few operations at any length.
  void reset() noexcept;

  /// Appends n samples, 0..kGuard. What is kept is finite: samples are held at ±1e8, and a NaN or
  /// an infinity is kept as 0.
  void write(const double* source, int n) noexcept;

  int length() const noexcept { return ringLength; }

  /// The position that the next written sample takes: one behind the newest sample.
  int writePosition() const noexcept { return position; }

  /// True when n samples from `first` on (0..length()-1; they may run into the guard copy at the
  /// ring's end) are written, so that `data() + first` may be read in one piece.
  bool holds(int first, int n) const noexcept { return first + n <= readableEnd; }

  /// True when every position of the ring is written.
  bool full() const noexcept { return readableEnd > ringLength; }

  /// True while every sample since the last reset lay within kQuietLimit (CleanCopy.h).
  bool isQuiet() const noexcept { return quiet; }

  /// The ring's first sample. Only what `holds` vouches for may be read through it.
  const double* data() const noexcept { return memory; }

  /// The sample at `index`, 0..length()-1; zero where nothing is written yet.
  double at(int index) const noexcept { return index < readableEnd ? memory[index] : 0.0; }

  /// `index` brought into the ring from any number of turns away; cheap for one turn back.
  int wrap(int index) const noexcept {
    if (index < 0) index += ringLength;
    const bool isInside = index >= 0 && index < ringLength;
    return isInside ? index : wrapFar(index);
  }

  /// n samples (1..kGuard + 1) from `first` on as one contiguous piece: a pointer into the ring
  /// where they are written, otherwise `scratch` (room for n) filled with them and with zeros.
  const double* span(int first, int n, double* scratch) const noexcept {
    return holds(first, n) ? memory + first : fillSpan(first, n, scratch);
  }

  /// `span` of the n samples of which the last is `back` samples (0..length() - n) older than the
  /// newest one.
  const double* spanBehind(int back, int n, double* scratch) const noexcept {
    return span(wrap(position - back - n), n, scratch);
  }

 private:
  int wrapFar(int index) const noexcept;
  const double* fillSpan(int first, int n, double* scratch) const noexcept;

  double* memory = nullptr;
  int ringLength = 0;
  int position = 0;
  bool quiet = true;
  int readableEnd = 0;  ///< end of the readable part; with the guard copy once the ring is full
};

}  // namespace orvantesco
