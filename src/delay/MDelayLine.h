#pragma once

#include <vector>

#include "delay/Module.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// A ring of floats with one write and one read pointer that move on together. What is read is
/// `delay` samples older than what is written in the same step, whichever comes first (a delay
/// of 0 wants the write first).
///
/// Order: `setMaxDelay`, which takes the memory; `setDelay` and `reset`, which places the pointers;
/// then `write` and `read` once for each sample.
///
/// What was written since the last reset lies in front of `readableEnd`; behind it a read finds
/// silence, whatever the memory holds. So a reset clears nothing, and takes no longer for seconds
/// than for a sample.
class MDelayLine : public Module {
 public:
  /// Room behind the longest delay, so that a read may look at neighbours.
  static constexpr int kReserve = 11;

  /// Silence, with the read pointer as far behind the write pointer as `setDelay` said.
  void reset() noexcept override;
  int memorySize() const noexcept override { return length * static_cast<int>(sizeof(float)); }

  /// Takes memory for delays of up to `samples` (0 at least), and resets. Throws std::bad_alloc.
  virtual void setMaxDelay(int samples);

  /// Samples between write and read, from the next `reset` or `setMaxDelay` on. Held within 0 and
  /// the longest.
  void setDelay(int samples) noexcept { delay = samples; }

  void write(float sample) noexcept {
    *writePtr = sample;
    const float* before = writePtr;
    writePtr = next(writePtr);
    noteWritten(before);
  }

  float read() noexcept {
    const float sample = at(readPtr);
    readPtr = next(readPtr);
    return sample;
  }

  /// The next 32 samples of `read` at once, for a delay of 32 at least: a pointer to them in the
  /// ring where they lie there in one piece, else to `scratch` (room for 32) with a copy. Stands
  /// until they are written over, 32 samples before the ring's end comes round to them.
  const float* readVector(float* scratch) noexcept {
    const float* piece = pieceFrom(readPtr, kVectorLength, scratch);
    readPtr = ahead(readPtr, kVectorLength);
    return piece;
  }

  /// Where to put the next 32 samples: into the ring where there is room in one piece, else into
  /// `scratch`. `commitVector` with the same pointer makes them written.
  float* vectorToWrite(float* scratch) noexcept {
    return end - writePtr >= kVectorLength ? writePtr : scratch;
  }
  void commitVector(const float* written) noexcept {
    if (written != writePtr) copyIn(written);
    const float* before = writePtr;
    writePtr = ahead(writePtr, kVectorLength);
    noteWritten(before);
  }

  /// 32 samples of which the first was written `samples` before the next write; as `readVector`.
  const float* vectorBehind(int samples, float* scratch) const noexcept;

  int ringLength() const noexcept { return length; }

 protected:
  /// What a read finds at a place of the ring.
  float at(const float* pointer) const noexcept { return pointer < readableEnd ? *pointer : 0.0F; }
  float* next(float* pointer) noexcept { return ++pointer == end ? begin : pointer; }
  /// `pointer` moved on by n samples, 0 to the ring's length.
  float* ahead(float* pointer, int n) const noexcept {
    return pointer + (end - pointer > n ? n : n - length);
  }
  /// n samples from `from` on in one piece, as in `readVector`.
  const float* pieceFrom(const float* from, int n, float* scratch) const noexcept {
    return readableEnd - from >= n ? from : joined(from, n, scratch);
  }
  int writeIndex() const noexcept { return static_cast<int>(writePtr - begin); }

  std::vector<float> storage{std::vector<float>(kReserve)};
  int length = kReserve;
  float* begin = storage.data();
  float* end = begin + length;
  const float* readableEnd = begin;  ///< `end` from the first full turn on
  float* writePtr = begin;
  float* readPtr = begin;
  int maxDelay = 0;
  int delay = 0;

 private:
  void placePointers() noexcept;
  /// What lies between `before` and the write pointer may be read from now on.
  void noteWritten(const float* before) noexcept {
    if (readableEnd != end) readableEnd = writePtr > before ? writePtr : end;
  }
  const float* joined(const float* from, int n, float* scratch) const noexcept;
  void copyIn(const float* vector) noexcept;
};

}  // namespace orvantesco
