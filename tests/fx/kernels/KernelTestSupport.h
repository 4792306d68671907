#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "fx/Kernels.h"
#include "fx/kernels/Level.h"

namespace orvantesco::testing_support {

using kernels::Level;

inline const Level kLevels[] = {Level::kScalar, Level::kSse2, Level::kAvx2};

/// Runs each test once at each level, and leaves the next test the level that the machine gets.
class AtEachLevel : public ::testing::TestWithParam<Level> {
 protected:
  void SetUp() override {
    if (!kernels::forceLevel(GetParam())) GTEST_SKIP() << "not on this processor";
  }
  void TearDown() override { kernels::forgetLevel(); }
};

inline std::string levelName(const ::testing::TestParamInfo<Level>& info) {
  return kernels::nameOf(info.param);
}

constexpr int kLongest = 100;
constexpr int kMisalignments = 8;

/// Bit for bit, but one NaN is as good as another.
template <class T>
bool same(T a, T b) {
  return std::isnan(a) ? std::isnan(b) : std::memcmp(&a, &b, sizeof(T)) == 0;
}

/// Where two vectors first differ, or -1.
template <class T>
int firstDifference(const std::vector<T>& a, const std::vector<T>& b) {
  if (a.size() != b.size()) return 0;
  for (size_t i = 0; i < a.size(); ++i) {
    if (!same(a[i], b[i])) return static_cast<int>(i);
  }
  return -1;
}

/// A vector between two rows of guard cells, its start off a 64-byte line by `shift` elements.
template <class T>
class Guarded {
 public:
  Guarded(std::vector<T> values, int shift)
      : start(kGuards + static_cast<size_t>(shift)),
        length(values.size()),
        cells(reinterpret_cast<T*>(
            allocBytes(static_cast<int>((start + length + kGuards) * sizeof(T))))) {
    for (size_t i = 0; i < start + length + kGuards; ++i) cells[i] = kGuard;
    for (size_t i = 0; i < length; ++i) cells[start + i] = values[i];
  }
  ~Guarded() { vecFree(cells); }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

  T* data() { return cells + start; }
  std::vector<T> values() const { return {cells + start, cells + start + length}; }
  bool guardsStand() const {
    for (size_t i = 0; i < kGuards; ++i) {
      if (cells[start - 1 - i] != kGuard || cells[start + length + i] != kGuard) return false;
    }
    return true;
  }

 private:
  static constexpr size_t kGuards = 16;
  static constexpr T kGuard = T(-7.25e30);
  size_t start;
  size_t length;
  T* cells;
};

/// Signals of fixed seed.
template <class T>
class Draw {
 public:
  explicit Draw(unsigned seed) : engine(seed) {}

  std::vector<T> plain(int n) {
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    std::vector<T> values(static_cast<size_t>(n));
    for (T& value : values) value = uniform(engine);
    return values;
  }

  /// A third of the elements are of the kind that breaks careless arithmetic.
  std::vector<T> awkward(int n) {
    using Limits = std::numeric_limits<T>;
    const T kinds[] = {T(0),
                       -T(0),
                       Limits::infinity(),
                       -Limits::infinity(),
                       T(1),
                       -T(1),
                       Limits::max(),
                       Limits::denorm_min(),
                       Limits::min(),
                       Limits::lowest(),
                       Limits::quiet_NaN(),
                       T(0.25)};
    std::vector<T> values = plain(n);
    for (T& value : values) {
      if (engine() % 3 == 0) value = kinds[engine() % std::size(kinds)];
    }
    return values;
  }

 private:
  std::mt19937 engine;
};

}  // namespace orvantesco::testing_support
