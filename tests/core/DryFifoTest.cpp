#include "core/DryFifo.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace orvantesco {
namespace {

TEST(DryFifo, HoldsTheSignalBackByExactlyTheLookahead) {
  for (const int lookahead : {32, 44, 48, 95, 96}) {
    DryFifo fifo;
    std::vector<double> in(320), out(320);
    std::iota(in.begin(), in.end(), 1.0);
    for (std::size_t i = 0; i < in.size(); i += 32) fifo.step(&in[i], &out[i], lookahead);
    std::vector<double> expected(static_cast<std::size_t>(lookahead), 0.0);
    expected.insert(expected.end(), in.begin(), in.end() - lookahead);
    EXPECT_EQ(out, expected) << "look-ahead " << lookahead;
  }
}

TEST(DryFifo, GivesSilenceAfterAClear) {
  DryFifo fifo;
  std::vector<double> ones(32, 1.0), out(32);
  fifo.step(ones.data(), out.data(), 48);
  fifo.step(ones.data(), out.data(), 48);
  fifo.clear();
  fifo.step(ones.data(), out.data(), 48);
  EXPECT_EQ(out, std::vector<double>(32, 0.0));
}

}  // namespace
}  // namespace orvantesco
