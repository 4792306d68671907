#include "host/PlugInfo.h"

#include <algorithm>
#include <charconv>

namespace orvantesco {
namespace {

int numberOf(std::string_view digits) {
  int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

ChannelCounts layoutOf(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) return {};
  return {numberOf(text.substr(0, dash)), numberOf(text.substr(dash + 1))};
}

}  // namespace

ChannelCounts largestLayout(std::string_view layouts) {
  ChannelCounts largest;
  while (!layouts.empty()) {
    const std::size_t end = std::min(layouts.find(' '), layouts.size());
    const ChannelCounts layout = layoutOf(layouts.substr(0, end));
    largest.inputs = std::max(largest.inputs, layout.inputs);
    largest.outputs = std::max(largest.outputs, layout.outputs);
    layouts.remove_prefix(std::min(end + 1, layouts.size()));
  }
  return largest;
}

}  // namespace orvantesco
