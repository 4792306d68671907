#include "host/dpf/Base64.h"

#include <gtest/gtest.h>

#include <random>

namespace orvantesco {
namespace {

std::vector<std::uint8_t> bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

TEST(Base64, WritesTheVectorsOfItsStandard) {
  EXPECT_EQ(toBase64(bytesOf("")), "");
  EXPECT_EQ(toBase64(bytesOf("f")), "Zg==");
  EXPECT_EQ(toBase64(bytesOf("fo")), "Zm8=");
  EXPECT_EQ(toBase64(bytesOf("foo")), "Zm9v");
  EXPECT_EQ(toBase64(bytesOf("foob")), "Zm9vYg==");
  EXPECT_EQ(toBase64(bytesOf("fooba")), "Zm9vYmE=");
  EXPECT_EQ(toBase64(bytesOf("foobar")), "Zm9vYmFy");
}

TEST(Base64, ReadsBackBytesOfEveryLengthAndValue) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 300; ++size) {
    std::vector<std::uint8_t> bytes(size);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(fromBase64(toBase64(bytes)), bytes) << size;
  }
}

TEST(Base64, RefusesWhatIsNoBase64) {
  for (const char* text :
       {"Z", "Zg=", "Zg", "Z===", "====", "Zm9v=", "Zm 9", "Zg==Zg==", "Zm9\xff"}) {
    EXPECT_FALSE(fromBase64(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace orvantesco
