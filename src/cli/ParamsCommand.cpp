#include "cli/ParamsCommand.h"

#include <cstdio>

#include "cli/ParamsReport.h"

namespace orvantesco::cli {
namespace {

bool printed(const std::string& text) {
  const bool taken = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  return std::fflush(stdout) == 0 && taken;
}

}  // namespace

int runParams(const ParamsOptions& options) {
  ParamBank bank;
  bank.buildParameterBank();
  const std::string text =
      options.json ? paramsJson(bank, options.match) : paramsTable(bank, options.match);
  if (printed(text)) return 0;
  std::fputs("orvantesco: params: cannot write to standard output\n", stderr);
  return 1;
}

}  // namespace orvantesco::cli
