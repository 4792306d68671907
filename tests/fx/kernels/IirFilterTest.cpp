#include "fx/kernels/IirReference.h"

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Draw;
using testing_support::drawDirect;
using testing_support::drawSections;
using testing_support::firstDifference;
using testing_support::Guarded;
using testing_support::IirReference;
using testing_support::OwnedFilter;
using Form = OwnedFilter::Form;
using Signal = std::vector<double>;

/// Both forms, every size: a filter, its delay line at the start and its model.
struct Subject {
  Form form = Form::kDirect;
  Signal taps;
  Signal line;

  IirReference model() const {
    IirReference reference =
        form == Form::kDirect ? IirReference::direct(taps) : IirReference::cascade(taps);
    reference.setLine(line);
    return reference;
  }
  std::string name() const {
    return (form == Form::kDirect ? "direct, taps " : "cascade, taps ") +
           std::to_string(taps.size());
  }
};

std::vector<Subject> allSubjects() {
  std::vector<Subject> subjects;
  for (int order = 1; order <= kIirMaxOrder; ++order) {
    subjects.push_back({Form::kDirect, drawDirect(order), Draw<double>(9).plain(order)});
  }
  // Beyond 12 sections a cascade runs in several groups.
  for (int sections = 1; sections <= 26; ++sections) {
    subjects.push_back(
        {Form::kCascade, drawSections(sections, 4u), Draw<double>(9).plain(2 * sections)});
  }
  return subjects;
}

class IirFilters : public AtEachLevel {};

TEST_P(IirFilters, HaveTheBitsOfThePlainLoopsAtEveryLength) {
  for (const Subject& subject : allSubjects()) {
    for (int n = 1; n <= testing_support::kLongest; n += n < 40 ? 1 : 7) {
      const Signal x = Draw<double>(static_cast<unsigned>(n)).plain(n);
      OwnedFilter filter(subject.form, subject.taps, subject.line);
      IirReference model = subject.model();
      ASSERT_EQ(filter.status, 0);
      ASSERT_EQ(firstDifference(filter.run(x), model.run(x)), -1) << subject.name() << " n " << n;
      ASSERT_EQ(firstDifference(filter.delayLine(), model.delayLine()), -1)
          << subject.name() << " n " << n;
    }
  }
}

TEST_P(IirFilters, CutAnywhereGiveTheBitsOfOnePiece) {
  std::mt19937 engine(17);
  const Signal x = Draw<double>(2).plain(600);
  for (const Subject& subject : allSubjects()) {
    OwnedFilter whole(subject.form, subject.taps, subject.line);
    OwnedFilter cut(subject.form, subject.taps, subject.line);
    Signal pieces = x;
    for (size_t at = 0; at < x.size();) {
      const size_t n = std::min<size_t>(1 + engine() % 40, x.size() - at);
      iirFilterInPlace(&pieces[at], static_cast<int>(n), cut.state);
      // The pattern of the blocks: the line goes out and comes back between any two pieces.
      const Signal line = cut.delayLine();
      iirSetDelayLine(cut.state, line.data());
      at += n;
    }
    ASSERT_EQ(firstDifference(pieces, whole.run(x)), -1) << subject.name();
  }
}

TEST_P(IirFilters, TouchNothingBesideTheirVectors) {
  for (const Subject& subject : allSubjects()) {
    for (int shift = 0; shift < testing_support::kMisalignments; ++shift) {
      const Signal x = Draw<double>(3).plain(32 - shift);
      Guarded<double> in(x, shift), out(Signal(x.size(), 0.0), 7 - shift), inPlace(x, shift);
      const int n = static_cast<int>(x.size());
      OwnedFilter filter(subject.form, subject.taps, subject.line);
      iirFilter(in.data(), out.data(), n, filter.state);
      iirSetDelayLine(filter.state, subject.line.data());
      iirFilterInPlace(inPlace.data(), n, filter.state);
      ASSERT_TRUE(in.guardsStand() && out.guardsStand() && inPlace.guardsStand());
      ASSERT_EQ(firstDifference(in.values(), x), -1) << subject.name();
      ASSERT_EQ(firstDifference(inPlace.values(), out.values()), -1) << subject.name();
      ASSERT_EQ(firstDifference(out.values(), subject.model().run(x)), -1) << subject.name();
    }
  }
}

TEST_P(IirFilters, ExchangeDelayLinesOfTheStatedLength) {
  for (const Subject& subject : allSubjects()) {
    OwnedFilter filter(subject.form, subject.taps, subject.line);
    Guarded<double> line(Signal(subject.line.size(), 0.0), 3);
    EXPECT_EQ(iirGetDelayLine(filter.state, line.data()), 0);
    EXPECT_EQ(firstDifference(line.values(), subject.line), -1) << subject.name();
    EXPECT_TRUE(line.guardsStand()) << subject.name();
    EXPECT_EQ(iirSetDelayLine(filter.state, nullptr), 0);
    EXPECT_EQ(filter.delayLine(), Signal(subject.line.size(), 0.0)) << subject.name();
    EXPECT_EQ(iirSetDelayLine(filter.state, subject.line.data()), 0);
    EXPECT_EQ(filter.delayLine(), subject.line) << subject.name();
  }
}

TEST_P(IirFilters, KeepTheirMemoryAcrossAChangeOfTaps) {
  const Signal x = Draw<double>(5).plain(64);
  Signal line(24, 0.0);
  int size = 0;
  iirBiquadStateSize(12, &size);
  std::uint8_t* buffer = allocBytes(size);
  IirReference model = IirReference::cascade(drawSections(12, 1));
  Signal expected, got;
  for (unsigned design = 1; design < 9; ++design) {
    IirState* state = nullptr;
    const Signal taps = drawSections(12, design);
    ASSERT_EQ(iirInitBiquads(&state, taps.data(), 12, line.data(), buffer), 0);
    Signal y(x.size());
    iirFilter(x.data(), y.data(), 64, state);
    iirGetDelayLine(state, line.data());
    got.insert(got.end(), y.begin(), y.end());

    IirReference next = IirReference::cascade(taps);
    if (design > 1) next.setLine(model.delayLine());
    model = next;
    const Signal reference = model.run(x);
    expected.insert(expected.end(), reference.begin(), reference.end());
  }
  vecFree(buffer);
  EXPECT_EQ(firstDifference(got, expected), -1);
}

#if defined(__x86_64__)
/// The audio thread's mode: results and operands below the normal range are zero.
class FlushedDenormals {
 public:
  FlushedDenormals() : saved(_mm_getcsr()) { _mm_setcsr(saved | 0x8040u); }
  ~FlushedDenormals() { _mm_setcsr(saved); }
  FlushedDenormals(const FlushedDenormals&) = delete;
  FlushedDenormals& operator=(const FlushedDenormals&) = delete;

 private:
  unsigned saved;
};

TEST_P(IirFilters, DecayAlikeWhereDenormalsAreFlushed) {
  const FlushedDenormals flushed;
  for (const Subject& subject : allSubjects()) {
    Signal x(40000, 0.0);
    x[0] = 1e-290;
    OwnedFilter filter(subject.form, subject.taps, Signal(subject.line.size(), 0.0));
    IirReference model = subject.model();
    model.setLine(Signal(subject.line.size(), 0.0));
    ASSERT_EQ(filter.run(x), model.run(x)) << subject.name();
  }
}
#endif

TEST_P(IirFilters, ABufferNeedNotBeAligned) {
  const Signal taps = drawSections(13, 3), line(26, 0.25), x = Draw<double>(1).plain(50);
  IirReference model = IirReference::cascade(taps);
  model.setLine(line);
  const Signal expected = model.run(x);
  int size = 0;
  iirBiquadStateSize(13, &size);
  for (int shift = 0; shift < 64; shift += 9) {
    std::uint8_t* room = allocBytes(size + 64);
    IirState* state = nullptr;
    ASSERT_EQ(iirInitBiquads(&state, taps.data(), 13, line.data(), room + shift), 0);
    Signal y(x.size());
    iirFilter(x.data(), y.data(), 50, state);
    EXPECT_EQ(firstDifference(y, expected), -1) << shift;
    vecFree(room);
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, IirFilters, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
