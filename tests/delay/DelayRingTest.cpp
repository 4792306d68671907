#include "delay/DelayRing.h"

#include <climits>
#include <cstdint>
#include <new>
#include <random>

#include <sys/mman.h>
#include <unistd.h>

#include "DelayTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::PlainRing;
using testing_support::Signal;

/// Every position of the ring against the plain one.
bool holdsTheSame(const DelayRing& ring, const PlainRing& plain) {
  bool same = ring.writePosition() == plain.writePosition();
  for (int i = 0; i < ring.length(); ++i) same = same && ring.at(i) == plain.at(i);
  return same;
}

/// Every span of n samples against the plain ring.
bool spansTheSame(const DelayRing& ring, const PlainRing& plain, int n) {
  bool same = true;
  double scratch[DelayRing::kGuard + 1];
  for (int first = 0; first < ring.length(); ++first) {
    const double* span = ring.span(first, n, scratch);
    for (int i = 0; i < n; ++i) same = same && span[i] == plain.at(first + i);
  }
  return same;
}

void writeBoth(DelayRing& ring, PlainRing& plain, const double* samples, int n) {
  ring.write(samples, n);
  plain.write(samples, n);
}

TEST(DelayRing, HoldsWhatWasWrittenForBlocksOfAnyLength) {
  const Signal signal = noise(100);
  for (const int block : {1, 7, 31, 32}) {
    DelayRing ring;
    ring.allocate(203);
    PlainRing plain(203);
    bool same = true;
    for (int at = 0; at + block <= 1200; at += block) {
      writeBoth(ring, plain, &signal[static_cast<size_t>(at)], block);
      same = same && holdsTheSame(ring, plain);
    }
    EXPECT_TRUE(same) << "blocks of " << block;
  }
}

TEST(DelayRing, EverySpanIsRightAtEveryStageOfTheFirstTurns) {
  const Signal signal = noise(100);
  for (const int length : {96, 97, 127, 128}) {
    DelayRing ring;
    ring.allocate(length);
    PlainRing plain(length);
    bool same = true;
    for (int block = 0; block < 20; ++block) {
      same = same && spansTheSame(ring, plain, DelayRing::kGuard + 1);
      writeBoth(ring, plain, &signal[static_cast<size_t>(block) * 32], 32);
    }
    EXPECT_TRUE(same) << "length " << length;
  }
}

TEST(DelayRing, ASpanAcrossTheEndOfAFullRingNeedsNoCopy) {
  const Signal signal = noise(10);
  DelayRing ring;
  ring.allocate(100);
  for (size_t at = 0; at < signal.size(); at += 32) ring.write(&signal[at], 32);
  double scratch[DelayRing::kGuard + 1];
  bool direct = true;
  for (int first = 0; first < 100; ++first) {
    direct = direct && ring.span(first, DelayRing::kGuard + 1, scratch) == ring.data() + first;
  }
  EXPECT_TRUE(direct);
}

TEST(DelayRing, ASpanThatIsWrittenInPartIsFilledWithZeros) {
  const Signal ones(32, 1.0);
  DelayRing ring;
  ring.allocate(100);
  ring.write(ones.data(), 20);
  double scratch[8];
  const double* span = ring.span(16, 8, scratch);
  EXPECT_EQ(Signal(span, span + 8), Signal({1, 1, 1, 1, 0, 0, 0, 0}));
}

TEST(DelayRing, ReadsZerosEverywhereAfterAResetAndClearsNothingForIt) {
  const Signal ones(32, 1.0);
  DelayRing ring;
  ring.allocate(1000);
  for (int block = 0; block < 100; ++block) ring.write(ones.data(), 32);
  ring.reset();
  const PlainRing silence(1000);
  EXPECT_TRUE(holdsTheSame(ring, silence));
  EXPECT_TRUE(spansTheSame(ring, silence, 33));
  EXPECT_TRUE(std::all_of(ring.data(), ring.data() + 1000, [](double x) { return x == 1.0; }))
      << "the old samples are out of sight, not overwritten";
}

TEST(DelayRing, StartsAnewAfterAReset) {
  const Signal signal = noise(200);
  DelayRing ring;
  ring.allocate(300);
  PlainRing plain(300);
  std::mt19937 engine(3);
  bool same = true;
  for (size_t at = 0; at + 32 <= signal.size(); at += 32) {
    if (engine() % 12 == 0) {
      ring.reset();
      plain.reset();
    }
    writeBoth(ring, plain, &signal[at], static_cast<int>(engine() % 33));
    same = same && holdsTheSame(ring, plain) && spansTheSame(ring, plain, 33);
  }
  EXPECT_TRUE(same);
}

/// Pages of the ring's memory that are resident.
long residentPages(const DelayRing& ring) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto begin = (reinterpret_cast<std::uintptr_t>(ring.data()) + page - 1) / page * page;
  const auto end = reinterpret_cast<std::uintptr_t>(ring.data() + ring.length()) / page * page;
  std::vector<unsigned char> isResident((end - begin) / page);
  if (mincore(reinterpret_cast<void*>(begin), end - begin, isResident.data()) != 0) return -1;
  return std::count_if(isResident.begin(), isResident.end(), [](auto flag) { return flag & 1; });
}

TEST(DelayRing, TouchesMemoryOnlyAsFarAsItIsWritten) {
  const Signal ones(32, 1.0);
  DelayRing ring;
  ring.allocate(8'000'000);
  const long fresh = residentPages(ring);
  ASSERT_GE(fresh, 0);
  for (int turn = 0; turn < 3; ++turn) {
    ring.reset();
    for (int block = 0; block < 64; ++block) ring.write(ones.data(), 32);  // four pages
    double scratch[33];
    for (int first = 0; first < 8'000'000; first += 1000) ring.span(first, 33, scratch);
  }
  EXPECT_LE(residentPages(ring), fresh + 6);
}

TEST(DelayRing, KeepsNothingThatIsNotFiniteOrBeyondTheLimit) {
  Signal bad(32, 0.25);
  bad[3] = NAN;
  bad[4] = INFINITY;
  bad[5] = -INFINITY;
  bad[6] = 1e300;
  bad[7] = -1.5e8;
  bad[8] = 1e8;
  for (const int n : {32, 12}) {
    DelayRing ring;
    ring.allocate(64);
    ring.write(bad.data(), n);
    EXPECT_EQ(Signal(ring.data() + 2, ring.data() + 10),
              Signal({0.25, 0.0, 0.0, 0.0, 1e8, -1e8, 1e8, 0.25}))
        << n << " samples";
  }
}

TEST(DelayRing, WrapsIndicesFromAnyNumberOfTurnsAway) {
  DelayRing ring;
  ring.allocate(100);
  EXPECT_EQ(ring.wrap(0), 0);
  EXPECT_EQ(ring.wrap(99), 99);
  EXPECT_EQ(ring.wrap(100), 0);
  EXPECT_EQ(ring.wrap(-1), 99);
  EXPECT_EQ(ring.wrap(-100), 0);
  EXPECT_EQ(ring.wrap(-101), 99);
  EXPECT_EQ(ring.wrap(-1050), 50);
  EXPECT_EQ(ring.wrap(1050), 50);
}

TEST(DelayRing, StaysAsItIsWhenMemoryIsRefused) {
  const Signal ones(32, 1.0);
  DelayRing ring;
  ring.allocate(100);
  ring.write(ones.data(), 32);
  EXPECT_THROW(ring.allocate(INT_MAX - 1000), std::bad_alloc);
  EXPECT_EQ(ring.length(), 100);
  EXPECT_EQ(ring.at(31), 1.0);
}

}  // namespace
}  // namespace orvantesco
