#include "cli/ScopeTable.h"

#include <fmt/format.h>

#include <iterator>

#include "params/Labels.h"

namespace orvantesco::cli {
namespace {

constexpr std::size_t pieceLength = 1 << 16;

}  // namespace

const char* scopeTraceName(int trace) {
  return ModSourceLabels[static_cast<std::size_t>(trace) + 1];
}

ScopeTable::ScopeTable(const std::string& path) : file(path), lines("seconds") {
  for (int trace = 0; trace < scopeTraces; ++trace) {
    lines.append(",").append(scopeTraceName(trace));
  }
  lines += '\n';
}

void ScopeTable::take(const ScopeRow& row) {
  fmt::format_to(std::back_inserter(lines), "{:.6f}", row.seconds);
  for (double value : row.values) fmt::format_to(std::back_inserter(lines), ",{:.9g}", value);
  lines += '\n';
  if (lines.size() >= pieceLength) write();
}

void ScopeTable::write() {
  const auto length = static_cast<std::int64_t>(lines.size());
  if (file.write(lines.data(), length) != length) file.throwFault();
  lines.clear();
}

void ScopeTable::commit() {
  write();
  file.commit();
}

}  // namespace orvantesco::cli
