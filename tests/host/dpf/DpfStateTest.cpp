#include "host/dpf/DpfState.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "host/OfflineHost.h"
#include "host/dpf/Base64.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"
#include "presets/HostState.h"

namespace orvantesco {
namespace {

class DpfState : public testing::Test {
 protected:
  using Bytes = std::vector<std::uint8_t>;

  void setFeedback(double value) {
    effect.GetParam(kFeedback)->setValue(value);
    effect.OnParamChange(kFeedback);
  }
  double feedback() { return effect.GetParam(kFeedback)->value(); }
  bool restore(const Bytes& bytes) { return restoreStateText(effect, toBase64(bytes).c_str()); }
  static Bytes withVersion(Bytes bytes, std::int32_t version) {
    std::memcpy(bytes.data(), &version, sizeof(version));
    return bytes;
  }

  OfflineHost host;
  Orvantesco effect{host};
};

TEST_F(DpfState, ThatWasCutAnywhereChangesNothing) {
  setFeedback(12.5);
  const Bytes whole = fromBase64(stateText(effect)).value();
  setFeedback(77.0);
  const std::string before = stateText(effect);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    ASSERT_FALSE(restore(Bytes(whole.begin(), whole.begin() + static_cast<long>(length))))
        << length;
  }
  EXPECT_EQ(stateText(effect), before);
  EXPECT_TRUE(restore(whole));
  EXPECT_EQ(feedback(), 12.5);
}

TEST_F(DpfState, OfAVersionToComeChangesNothing) {
  const Bytes whole = fromBase64(stateText(effect)).value();
  setFeedback(77.0);
  const std::string before = stateText(effect);
  EXPECT_FALSE(restore(withVersion(whole, kStateVersion + 1)));
  EXPECT_FALSE(restore(withVersion(whole, kOldestStateVersion - 1)));
  EXPECT_EQ(stateText(effect), before);
}

/// Older programs had fewer parameters.
TEST_F(DpfState, OfAnOlderVersionMayEndEarly) {
  setFeedback(77.0);
  Bytes shorter = withVersion(fromBase64(stateText(effect)).value(), kStateVersion - 1);
  shorter.resize(shorter.size() - 8 * 20);
  setFeedback(1.0);
  EXPECT_TRUE(restore(shorter));
  EXPECT_EQ(feedback(), 77.0);
}

}  // namespace
}  // namespace orvantesco
