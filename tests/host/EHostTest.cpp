#include "host/EHost.h"

#include <gtest/gtest.h>

#include <string>

namespace orvantesco {
namespace {

struct Expectation {
  const char* name;
  int number;
};

class KnownHost : public testing::TestWithParam<Expectation> {};

TEST_P(KnownHost, IsFoundInsideALongerNameWithoutRegardToCase) {
  std::string name = GetParam().name;
  EXPECT_EQ(static_cast<int>(hostFromName(name)), GetParam().number);
  for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  EXPECT_EQ(static_cast<int>(hostFromName("My " + name + " 7.1")), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Table, KnownHost,
                         testing::Values(Expectation{"cubase", 3}, Expectation{"reaper", 1},
                                         Expectation{"nuendo", 4}, Expectation{"cakewalk", 5},
                                         Expectation{"samplitude", 8}, Expectation{"fruity", 7},
                                         Expectation{"live", 9}, Expectation{"melodyne", 12},
                                         Expectation{"vstmanlib", 13}, Expectation{"aulab", 14},
                                         Expectation{"garageband", 22}, Expectation{"ardour", 28},
                                         Expectation{"numerology", 29}, Expectation{"forte", 15},
                                         Expectation{"chainer", 16}, Expectation{"audition", 17},
                                         Expectation{"orion", 18}, Expectation{"sawstudio", 20},
                                         Expectation{"logic", 21}, Expectation{"digital", 23},
                                         Expectation{"audiomulch", 25}, Expectation{"presonus", 26},
                                         Expectation{"vst3plugintesthost", 27},
                                         Expectation{"protools", 2},
                                         Expectation{"standalone", 24}));

TEST(HostFromName, IsUnknownForAnyOtherName) {
  EXPECT_EQ(hostFromName(""), EHost::unknown);
  EXPECT_EQ(hostFromName("Pro Tools"), EHost::unknown);
  EXPECT_EQ(static_cast<int>(EHost::unknown), 0);
}

TEST(HostFromName, LetsTheEarlierRowDecideWhereSeveralMatch) {
  EXPECT_EQ(hostFromName("Digital Live"), EHost::live);
  EXPECT_EQ(hostFromName("digital melodyne"), EHost::digital);
  EXPECT_EQ(hostFromName("reaper in cubase"), EHost::cubase);
  EXPECT_EQ(hostFromName("standalone ardour"), EHost::ardour);
  EXPECT_EQ(hostFromName("numerology standalone"), EHost::standalone);
}

TEST(HostFromName, LetsTheLeftPairOfARowDecideBeforeTheRightOne) {
  EXPECT_EQ(hostFromName("forte reaper"), EHost::forte);
  EXPECT_EQ(hostFromName("forte cubase"), EHost::cubase);
}

}  // namespace
}  // namespace orvantesco
