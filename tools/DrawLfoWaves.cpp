// Draws the table of LFO waves that the engine embeds: one record of 4096 values for each shape.
// Usage: draw-lfo-waves FILE

#include <cstdio>
#include <cstring>
#include <fstream>

#include "LfoShapes.h"
#include "mod/WaveRecord.h"

namespace {

orvantesco::WaveRecord drawn(const orvantesco::LfoShape& shape) {
  orvantesco::WaveRecord record{};
  record.id = shape.id;
  std::strncpy(record.name, shape.name, sizeof(record.name) - 1);
  for (int i = 0; i < orvantesco::WaveRecord::kLength; ++i) record.samples[i] = shape.value(i);
  return record;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: draw-lfo-waves FILE\n");
    return 2;
  }
  std::ofstream file(argv[1], std::ios::binary);
  for (const orvantesco::LfoShape& shape : orvantesco::lfoShapes()) {
    const orvantesco::WaveRecord record = drawn(shape);
    file.write(reinterpret_cast<const char*>(&record), sizeof(record));
  }
  file.close();
  if (file.good()) return 0;
  std::fprintf(stderr, "draw-lfo-waves: cannot write %s\n", argv[1]);
  return 1;
}
