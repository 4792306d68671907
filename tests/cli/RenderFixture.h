#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/AudioFiles.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {

using Arguments = std::vector<std::string>;

inline int linesOf(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/// Settings under which the output is the dry signal alone, exactly.
inline Arguments dryOnly() { return {"--set", "Wet Level=0", "--set", "Dry Level=100"}; }

/// Settings under which the output is one echo of the input per side, nothing else.
inline Arguments oneEcho(const std::string& leftMs, const std::string& rightMs) {
  return {"--set", "Dry Level=0",
          "--set", "Main ModDepth=0",
          "--set", "Timebase 1=MS",
          "--set", "Delay TimeL 1=" + leftMs,
          "--set", "Delay TimeR 1=" + rightMs,
          "--set", "Feedback 1=0"};
}

/// Renders in a folder of its own, which holds "in.wav" once a test has written it.
class RenderTest : public testing::Test {
 protected:
  ProgramResult render(const Arguments& arguments) {
    Arguments all{"render"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgramIn(folder.name(), all);
  }

  /// Renders "in.wav" to "out.wav" with samples of 64 bits; the arguments come on top.
  ProgramResult renderDouble(const Arguments& arguments) {
    Arguments all{"in.wav", "-o", "out.wav", "--format", "double"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return render(all);
  }

  Sound rendered(const Arguments& arguments) {
    const ProgramResult result = renderDouble(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return result.exitCode == 0 ? readSound(folder.file("out.wav")) : silence(0);
  }

  nlohmann::json statsOf(Arguments arguments) {
    arguments.push_back("--stats");
    const ProgramResult result = renderDouble(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return nlohmann::json::parse(result.out, nullptr, false);
  }

  void input(const Sound& sound) { writeSound(folder.file("in.wav"), sound); }

  /// The call has to end with this code and one line on stderr that holds a text, and to leave
  /// nothing behind.
  void expectRefusal(int exitCode, const Arguments& arguments, const std::string& mention) {
    const auto before = folder.entries();
    const ProgramResult result = render(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << result.err;
    EXPECT_EQ(linesOf(result.err), 1) << result.err;
    EXPECT_EQ(result.err.rfind("orvantesco: ", 0), 0u) << result.err;
    EXPECT_NE(result.err.find(mention), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(folder.entries(), before) << "something was left behind";
  }

  TemporaryFolder folder;
};

inline Arguments operator+(Arguments first, const Arguments& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

}  // namespace orvantesco::cli
