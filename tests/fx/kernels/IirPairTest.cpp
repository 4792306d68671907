#include "fx/kernels/IirReference.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Draw;
using testing_support::drawDirect;
using testing_support::drawSections;
using testing_support::firstDifference;
using testing_support::Guarded;
using testing_support::OwnedFilter;
using Form = OwnedFilter::Form;
using Signal = std::vector<double>;

struct Channel {
  Form form = Form::kDirect;
  Signal taps;
  Signal line;
};

Channel directOf(int order, double scale) {
  return {Form::kDirect, drawDirect(order, scale), Draw<double>(3).plain(order)};
}

Channel cascadeOf(int sections, unsigned seed) {
  return {Form::kCascade, drawSections(sections, seed), Draw<double>(seed).plain(2 * sections)};
}

/// Empty if the pair gave, output and memory, the bits of two single runs.
std::string pairVerdict(const Channel& a, const Channel& b, int n) {
  const Signal x = Draw<double>(1).plain(n), z = Draw<double>(2).plain(n);
  OwnedFilter aloneA(a.form, a.taps, a.line), aloneB(b.form, b.taps, b.line);
  OwnedFilter pairedA(a.form, a.taps, a.line), pairedB(b.form, b.taps, b.line);
  Guarded<double> first(x, n % 8), second(z, (n + 3) % 8);
  if (iirFilterPair(first.data(), pairedA.state, second.data(), pairedB.state, n) != 0) {
    return "refused";
  }
  if (!first.guardsStand() || !second.guardsStand()) return "wrote outside";
  if (firstDifference(first.values(), aloneA.run(x)) >= 0) return "first vector differs";
  if (firstDifference(second.values(), aloneB.run(z)) >= 0) return "second vector differs";
  if (firstDifference(pairedA.delayLine(), aloneA.delayLine()) >= 0) return "first line differs";
  if (firstDifference(pairedB.delayLine(), aloneB.delayLine()) >= 0) return "second line differs";
  return "";
}

const int kLengths[] = {1, 2, 3, 5, 8, 11, 12, 13, 31, 32, 33, 64, 99};

class IirPairs : public AtEachLevel {};

TEST_P(IirPairs, HaveTheBitsOfTwoSingleFilters) {
  for (const int n : kLengths) {
    for (int order = 1; order <= kIirMaxOrder; ++order) {
      ASSERT_EQ(pairVerdict(directOf(order, 1.0), directOf(order, 2.3), n), "")
          << "order " << order << " n " << n;
    }
    for (int sections = 1; sections <= 26; ++sections) {
      ASSERT_EQ(pairVerdict(cascadeOf(sections, 1), cascadeOf(sections, 2), n), "")
          << "sections " << sections << " n " << n;
    }
  }
}

TEST_P(IirPairs, OfUnlikeFiltersWorkToo) {
  for (const int n : kLengths) {
    EXPECT_EQ(pairVerdict(directOf(12, 1.0), directOf(3, 1.0), n), "");
    EXPECT_EQ(pairVerdict(directOf(12, 1.0), directOf(11, 1.0), n), "");
    EXPECT_EQ(pairVerdict(directOf(2, 1.0), cascadeOf(1, 1), n), "");
    EXPECT_EQ(pairVerdict(cascadeOf(3, 1), cascadeOf(4, 2), n), "");
    EXPECT_EQ(pairVerdict(cascadeOf(13, 1), cascadeOf(12, 2), n), "");
  }
}

TEST_P(IirPairs, OfOneFilterWithItselfRunOneAfterTheOther) {
  const Signal x = Draw<double>(1).plain(32), z = Draw<double>(2).plain(32);
  const Channel channel = cascadeOf(2, 1);
  OwnedFilter sequential(channel.form, channel.taps, channel.line);
  OwnedFilter paired(channel.form, channel.taps, channel.line);
  const Signal first = sequential.run(x), second = sequential.run(z);
  Signal a = x, b = z;
  iirFilterPair(a.data(), paired.state, b.data(), paired.state, 32);
  EXPECT_EQ(firstDifference(a, first), -1);
  EXPECT_EQ(firstDifference(b, second), -1);
}

TEST_P(IirPairs, RefuseNullAndBadLength) {
  const Channel channel = cascadeOf(2, 1);
  OwnedFilter filter(channel.form, channel.taps, channel.line);
  double a[4] = {1, 2, 3, 4}, b[4] = {1, 2, 3, 4};
  EXPECT_EQ(iirFilterPair(nullptr, filter.state, b, filter.state, 4), -8);
  EXPECT_EQ(iirFilterPair(a, nullptr, b, filter.state, 4), -8);
  EXPECT_EQ(iirFilterPair(a, filter.state, nullptr, filter.state, 4), -8);
  EXPECT_EQ(iirFilterPair(a, filter.state, b, nullptr, 4), -8);
  EXPECT_EQ(iirFilterPair(a, filter.state, b, filter.state, 0), -6);
  EXPECT_EQ(a[3] + b[3], 8.0);
  EXPECT_EQ(filter.delayLine(), channel.line);
}

INSTANTIATE_TEST_SUITE_P(Levels, IirPairs, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
