#pragma once

#include <vector>

namespace orvantesco::reading {

/// A constant of the index space and what was written down for its family, cells parted by "|".
struct Row {
  int constant;
  const char* cells;
};

std::vector<Row> rows();

}  // namespace orvantesco::reading
