#pragma once

#include <string>

#include "cli/OutputFile.h"
#include "cli/ScopeTrace.h"

namespace orvantesco::cli {

/// The traces as CSV: a heading, then a line for each row.
class ScopeTable : public ScopeSheet {
 public:
  explicit ScopeTable(const std::string& path);
  void take(const ScopeRow& row) override;
  void commit() override;

 private:
  void write();

  OutputFile file;
  std::string lines;  ///< not yet written
};

}  // namespace orvantesco::cli
