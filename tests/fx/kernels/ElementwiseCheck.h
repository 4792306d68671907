#pragma once

#include <functional>
#include <ostream>

#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco::testing_support {

/// One operation that maps elements to elements, with what it must do to one of them.
template <class T>
struct Elementwise {
  const char* name;
  int sources;  ///< pointers to const that it takes: 0, 1 (a) or 2 (a, b)
  std::function<int(const T* a, const T* b, T val, T* dst, int n)> call;
  std::function<T(T a, T b, T val, T dst)> model;
};

/// The constants that an operation is tried with.
template <class T>
std::vector<T> constants() {
  using Limits = std::numeric_limits<T>;
  return {T(0), -T(0), T(1), T(-1), T(0.37), T(-2.5), Limits::infinity(), Limits::quiet_NaN()};
}

template <class T>
struct Trial {
  const Elementwise<T>& operation;
  int n;
  int shift;
  T val;

  /// Empty if the operation did what its model does and touched nothing else.
  std::string verdict() const {
    Draw<T> draw(static_cast<unsigned>(n * kMisalignments + shift + 1));
    const std::vector<T> a = draw.awkward(n), b = draw.awkward(n), before = draw.awkward(n);
    Guarded<T> sourceA(a, shift), sourceB(b, (shift * 5 + 3) % kMisalignments);
    Guarded<T> target(before, (shift * 3 + 1) % kMisalignments);
    const int status = operation.call(sourceA.data(), sourceB.data(), val, target.data(), n);
    std::vector<T> expected = before;
    for (size_t i = 0; i < expected.size(); ++i) {
      expected[i] = operation.model(a[i], b[i], val, before[i]);
    }
    if (status < 0) return "refused with " + std::to_string(status);
    if (!target.guardsStand()) return "wrote outside";
    if (firstDifference(sourceA.values(), a) >= 0 || firstDifference(sourceB.values(), b) >= 0) {
      return "wrote into a source";
    }
    const int at = firstDifference(target.values(), expected);
    return at < 0 ? "" : "differs at element " + std::to_string(at);
  }
};

/// Every length, misalignment and constant.
template <class T>
void expectModel(const Elementwise<T>& operation) {
  for (int n = 1; n <= kLongest; ++n) {
    for (int shift = 0; shift < kMisalignments; ++shift) {
      const std::vector<T> vals = constants<T>();
      const T val = vals[static_cast<size_t>(n + shift) % vals.size()];
      const std::string verdict = Trial<T>{operation, n, shift, val}.verdict();
      ASSERT_EQ(verdict, "") << operation.name << " n " << n << " shift " << shift << " val "
                             << val;
    }
  }
  for (const T val : constants<T>()) {
    const std::string verdict = Trial<T>{operation, 32, 0, val}.verdict();
    ASSERT_EQ(verdict, "") << operation.name << " val " << val;
  }
}

/// A refused call writes nothing and says why: a null pointer before a bad length.
template <class T>
void expectRefusals(const Elementwise<T>& operation) {
  const std::vector<T> before(4, T(0.5));
  Guarded<T> a(before, 0), b(before, 0), target(before, 0);
  const auto call = [&](const T* x, const T* y, T* dst, int n) {
    return operation.call(x, y, T(2), dst, n);
  };
  for (const int n : {0, -1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(call(a.data(), b.data(), target.data(), n), -6) << operation.name;
  }
  for (const int n : {4, 0}) {
    EXPECT_EQ(call(a.data(), b.data(), nullptr, n), -8) << operation.name;
    if (operation.sources > 0) {
      EXPECT_EQ(call(nullptr, b.data(), target.data(), n), -8) << operation.name;
    }
    if (operation.sources > 1) {
      EXPECT_EQ(call(a.data(), nullptr, target.data(), n), -8) << operation.name;
    }
  }
  EXPECT_EQ(firstDifference(target.values(), before), -1) << operation.name;
  EXPECT_TRUE(target.guardsStand()) << operation.name;
}

}  // namespace orvantesco::testing_support
