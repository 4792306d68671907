#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "cli/AudioReader.h"
#include "cli/AudioWriter.h"
#include "cli/AutomationFile.h"
#include "cli/BlockLengths.h"
#include "cli/ProgressBar.h"
#include "cli/RenderEngine.h"
#include "cli/RenderOutput.h"
#include "cli/RenderStats.h"
#include "cli/SideChainReader.h"

namespace orvantesco::cli {

/// Plays one file through the engine into another: warm-up, input, tail.
///
/// Blocks are cut where the input begins and at every line of automation, so that what happens at
/// a frame happens at that frame whatever the length of the blocks.
class Renderer {
 public:
  /// Opens what is read and builds the engine; the output is begun when all of that is good.
  Renderer(const RenderSettings& settings, const RenderJob& job);

  /// Renders everything and gives the output its name.
  RenderStats run(ProgressBar& progress);

  /// Effects that were chosen but that this build cannot make, each as one line.
  std::vector<std::string> missingEffects() const { return engine.missingEffects(); }

  /// Lines that a user should read after the render.
  std::vector<std::string> warnings() const;

 private:
  std::unique_ptr<SideChainReader> openSideChain() const;
  AudioWriter::Plan planOutput() const;
  void warmUp();
  void playInput(ProgressBar& progress);
  void playTail();

  int nextBlock() { return lengths.next(); }
  int cutAtEvent(int frames) const;
  void applyEvents();
  int readInput(int frames);
  void clearInput(int frames);
  void renderBlock(int frames);
  void renderAndWrite(int frames);
  std::int64_t tailFramesLeft(std::int64_t inputFrames) const;

  const RenderSettings settings;
  const RenderJob job;
  AudioReader input;
  std::unique_ptr<SideChainReader> sideChain;
  RenderEngine engine;
  std::vector<AutomationEvent> events;
  std::size_t nextEvent = 0;
  BlockLengths lengths;
  std::unique_ptr<AudioWriter> file;
  std::optional<RenderOutput> output;
  std::int64_t position = 0;  ///< frames since the input's first one

  std::vector<double> left, right, side, outLeft, outRight;
};

}  // namespace orvantesco::cli
