#include "delay/StepRows.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvantesco {

namespace {

/// Value of a pattern at `x`, the step's place between the first used step (0) and the last (1).
double patternValue(StepPattern pattern, double x) {
  switch (pattern) {
    case StepPattern::AllOn:
      return 1.0;
    case StepPattern::Ramp:
      return x;
    case StepPattern::Exponential:
      return x * x;
    case StepPattern::Triangle:
      return 1.0 - std::abs(2.0 * x - 1.0);
    case StepPattern::Sinus:
      return std::sin(std::numbers::pi * x);
    case StepPattern::Half:
      return 0.5;
    default:
      return 0.0;
  }
}

int usedSteps(const StepSpan& span) { return std::clamp(span.count, 1, 16); }

}  // namespace

double quantiseStep(double position, int quantisation) {
  if (quantisation <= 0) return position;
  const double levels = quantisation;
  return std::min(std::floor((levels + 1.0) * position) / levels, 1.0);
}

void applyStepPattern(StepRow& row, StepPattern pattern, const StepSpan& span, RandomDraw& draw) {
  if (pattern == StepPattern::Randomize) {
    for (double& step : row) step = static_cast<double>(draw.next()) / RandomDraw::kMax;
  } else {
    const int last = usedSteps(span) - 1;
    for (int i = 0; i <= last; ++i) {
      const double x = last == 0 ? 0.0 : static_cast<double>(i) / last;
      row[static_cast<std::size_t>(i)] = patternValue(pattern, x);
    }
  }
  for (double& step : row) step = quantiseStep(step, span.quantisation);
}

void editStepRow(StepRow& row, StepEdit edit, const StepSpan& span, StepRow& clipboard) {
  const auto first = row.begin();
  const auto end = first + usedSteps(span);
  switch (edit) {
    case StepEdit::Reverse:
      std::reverse(first, end);
      break;
    case StepEdit::Invert:
      std::transform(first, end, first, [](double x) { return 1.0 - x; });
      break;
    case StepEdit::Copy:
      clipboard = row;
      break;
    case StepEdit::Paste:
      row = clipboard;
      break;
    case StepEdit::RotateLeft:
      std::rotate(first, first + 1, end);
      break;
    case StepEdit::RotateRight:
      std::rotate(first, end - 1, end);
      break;
  }
}

}  // namespace orvantesco
