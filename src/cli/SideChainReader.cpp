#include "cli/SideChainReader.h"

namespace orvantesco::cli {

void SideChainReader::read(double* samples, int frames) {
  second.resize(static_cast<std::size_t>(frames));
  double* buffers[] = {samples, second.data()};
  file.read(buffers, frames);
  if (file.channels() < 2) return;
  // Halved first: two large samples have no sum.
  for (std::size_t i = 0; i < second.size(); ++i) samples[i] = 0.5 * samples[i] + 0.5 * second[i];
}

}  // namespace orvantesco::cli
