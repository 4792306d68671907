#pragma once

#include <functional>

#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco::testing_support {

/// One filter of either form as plain loops, in the one order of roundings that counts.
class IirReference {
 public:
  static IirReference direct(const std::vector<double>& taps) {
    IirReference filter;
    const size_t order = taps.size() / 2 - 1;
    filter.addSection(taps.data(), order);
    return filter;
  }
  static IirReference cascade(const std::vector<double>& taps) {
    IirReference filter;
    for (size_t at = 0; at < taps.size(); at += 6) filter.addSection(taps.data() + at, 2);
    return filter;
  }

  void setLine(std::vector<double> values) { line = std::move(values); }
  const std::vector<double>& delayLine() const { return line; }

  std::vector<double> run(std::vector<double> x) {
    size_t at = 0;
    for (const Section& section : sections) {
      for (double& sample : x) sample = step(section, &line[at], sample);
      at += section.b.size() - 1;
    }
    return x;
  }

 private:
  struct Section {
    std::vector<double> b, a;
  };

  void addSection(const double* taps, size_t order) {
    Section section;
    for (size_t k = 0; k <= order; ++k) {
      section.b.push_back(taps[k] / taps[order + 1]);
      section.a.push_back(taps[order + 1 + k] / taps[order + 1]);
    }
    sections.push_back(section);
    line.resize(line.size() + order, 0.0);
  }

  static double step(const Section& section, double* s, double x) {
    const size_t order = section.b.size() - 1;
    const double y = section.b[0] * x + s[0];
    for (size_t k = 0; k + 1 < order; ++k) {
      s[k] = (s[k + 1] + section.b[k + 1] * x) - section.a[k + 1] * y;
    }
    s[order - 1] = section.b[order] * x - section.a[order] * y;
    return y;
  }

  std::vector<Section> sections;
  std::vector<double> line;
};

/// The library's filter with the storage that its caller owns.
class OwnedFilter {
 public:
  enum class Form { kDirect, kCascade };

  OwnedFilter(Form form, const std::vector<double>& taps, const std::vector<double>& line)
      : lineLength(line.size()) {
    const int sections = static_cast<int>(taps.size() / 6);
    int size = 0;
    if (form == Form::kDirect) {
      iirDesignBufferSize(kIirMaxOrder, &size);
    } else {
      iirBiquadStateSize(sections, &size);
    }
    buffer = allocBytes(size);
    status = form == Form::kDirect
                 ? iirInitDirect(&state, taps.data(), static_cast<int>(taps.size() / 2 - 1),
                                 line.data(), buffer)
                 : iirInitBiquads(&state, taps.data(), sections, line.data(), buffer);
  }
  ~OwnedFilter() { vecFree(buffer); }
  OwnedFilter(const OwnedFilter&) = delete;
  OwnedFilter& operator=(const OwnedFilter&) = delete;

  std::vector<double> run(const std::vector<double>& x) {
    std::vector<double> y(x.size());
    iirFilter(x.data(), y.data(), static_cast<int>(x.size()), state);
    return y;
  }
  std::vector<double> delayLine() const {
    std::vector<double> line(lineLength);
    iirGetDelayLine(state, line.data());
    return line;
  }

  IirState* state = nullptr;
  int status = -1;

 private:
  size_t lineLength;
  std::uint8_t* buffer = nullptr;
};

/// Stable sections with unnormalised taps.
inline std::vector<double> drawSections(int count, unsigned seed) {
  std::mt19937 engine(seed);
  std::uniform_real_distribution<double> uniform(-1.0, 1.0);
  std::vector<double> taps;
  for (int i = 0; i < count; ++i) {
    const double a0 = 1.5 + uniform(engine);
    const double radius = 0.9 + 0.08 * uniform(engine), cosine = uniform(engine);
    for (const double tap : {0.5 + 0.3 * uniform(engine), uniform(engine), uniform(engine), a0,
                             -2.0 * radius * cosine * a0, radius * radius * a0}) {
      taps.push_back(tap);
    }
  }
  return taps;
}

/// A Chebyshev low-pass, its taps scaled so that A0 is not 1.
inline std::vector<double> drawDirect(int order, double scale = 1.7) {
  std::vector<double> taps(static_cast<size_t>(2 * (order + 1)));
  double work[1] = {};
  iirDesignLowpass(0.21, 0.5, order, taps.data(), kChebyshev1, work);
  for (double& tap : taps) tap *= scale;
  return taps;
}

}  // namespace orvantesco::testing_support
