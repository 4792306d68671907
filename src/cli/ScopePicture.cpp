#include "cli/ScopePicture.h"

#include <cairo.h>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "cli/Failure.h"

namespace orvantesco::cli {
namespace {

constexpr int columns = 1120;
constexpr int leftMargin = 76;
constexpr int rightMargin = 16;
constexpr int laneHeight = 58;
constexpr int laneGap = 8;
constexpr int topMargin = 14;
constexpr int bottomMargin = 40;
constexpr int width = leftMargin + columns + rightMargin;
constexpr int height = topMargin + scopeTraces * (laneHeight + laneGap) + bottomMargin;

struct Colour {
  double red, green, blue;
};
constexpr Colour ink{0.15, 0.15, 0.18};
constexpr Colour paper{1.0, 1.0, 1.0};
constexpr Colour laneColour{0.955, 0.96, 0.97};
constexpr Colour gridColour{0.85, 0.86, 0.88};

struct Range {
  double low, high;
};

bool isEnvelope(int trace) { return trace == 8 || trace == 9; }

/// Envelopes alone pass 1, and never fall below 0.
Range rangeOf(int trace) { return isEnvelope(trace) ? Range{0.0, 1.5} : Range{-1.0, 1.0}; }

Colour colourOf(int trace) {
  if (trace < 4) return {0.13, 0.38, 0.63};
  if (trace < 8) return {0.72, 0.35, 0.10};
  return isEnvelope(trace) ? Colour{0.15, 0.50, 0.25} : Colour{0.48, 0.22, 0.58};
}

/// 1, 2 or 5 times a power of ten, for about ten marks.
double markEvery(double seconds) {
  const double rough = seconds / 10.0;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  for (double step : {1.0, 2.0, 5.0}) {
    if (step * power >= rough) return step * power;
  }
  return 10.0 * power;
}

struct SurfaceEnd {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct PenEnd {
  void operator()(cairo_t* pen) const { cairo_destroy(pen); }
};

/// Draws rectangles and short texts.
class Canvas {
 public:
  Canvas()
      : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)),
        pen(cairo_create(surface.get())) {
    cairo_select_font_face(pen.get(), "sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(pen.get(), 12.0);
    cairo_set_antialias(pen.get(), CAIRO_ANTIALIAS_NONE);
  }
  // A place and a size. NOLINTNEXTLINE(readability-function-size)
  void box(double x, double y, double w, double h, const Colour& colour) {
    use(colour);
    cairo_rectangle(pen.get(), x, y, w, h);
    cairo_fill(pen.get());
  }
  void text(double x, double y, const std::string& words) {
    use(ink);
    cairo_move_to(pen.get(), x, y);
    cairo_show_text(pen.get(), words.c_str());
  }
  bool writeTo(OutputFile& file) {
    const auto write = [](void* target, const unsigned char* data, unsigned bytes) {
      const bool isDone = static_cast<OutputFile*>(target)->write(data, bytes) == bytes;
      return isDone ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
    };
    return cairo_surface_write_to_png_stream(surface.get(), write, &file) == CAIRO_STATUS_SUCCESS;
  }

 private:
  void use(const Colour& c) { cairo_set_source_rgb(pen.get(), c.red, c.green, c.blue); }

  std::unique_ptr<cairo_surface_t, SurfaceEnd> surface;
  std::unique_ptr<cairo_t, PenEnd> pen;
};

double topOf(int trace) { return topMargin + trace * (laneHeight + laneGap); }

double heightOf(double value, int trace) {
  const Range range = rangeOf(trace);
  const double share =
      (std::clamp(value, range.low, range.high) - range.low) / (range.high - range.low);
  return topOf(trace) + (1.0 - share) * (laneHeight - 2) + 1.0;
}

void drawTime(Canvas& canvas, double seconds) {
  const double step = markEvery(seconds);
  for (int mark = 0; mark * step <= seconds * (1.0 + 1e-9); ++mark) {
    const double x = leftMargin + mark * step / seconds * columns;
    for (int trace = 0; trace < scopeTraces; ++trace) {
      canvas.box(std::floor(x), topOf(trace), 1.0, laneHeight, gridColour);
    }
    canvas.text(x - 8.0, height - 20.0, fmt::format("{:g}", mark * step));
  }
  canvas.text(leftMargin, height - 5.0, "seconds");
}

void drawFrames(Canvas& canvas) {
  canvas.box(0.0, 0.0, width, height, paper);
  for (int trace = 0; trace < scopeTraces; ++trace) {
    canvas.box(leftMargin, topOf(trace), columns, laneHeight, laneColour);
    canvas.box(leftMargin, std::floor(heightOf(0.0, trace)), columns, 1.0, gridColour);
    canvas.text(8.0, topOf(trace) + laneHeight / 2.0 + 4.0, scopeTraceName(trace));
  }
}

}  // namespace

ScopePicture::ScopePicture(const std::string& path, double lengthSeconds)
    : file(path), length(lengthSeconds), lanes(scopeTraces, Lane(columns)) {}

void ScopePicture::take(const ScopeRow& row) {
  const auto column = static_cast<std::size_t>(
      std::clamp(row.seconds / length * columns, 0.0, static_cast<double>(columns - 1)));
  for (std::size_t trace = 0; trace < lanes.size(); ++trace) {
    Span& span = lanes[trace][column];
    const double value = row.values[trace];
    span.low = span.isSeen ? std::min(span.low, value) : value;
    span.high = span.isSeen ? std::max(span.high, value) : value;
    span.last = value;
    span.isSeen = true;
  }
}

void ScopePicture::commit() {
  Canvas canvas;
  drawFrames(canvas);
  drawTime(canvas, length);
  for (int trace = 0; trace < scopeTraces; ++trace) {
    const Lane& lane = lanes[static_cast<std::size_t>(trace)];
    Span now = lane.front();
    for (int x = 0; x < columns; ++x) {
      const Span& next = lane[static_cast<std::size_t>(x)];
      // From where the trace was to where it goes; a column without rows goes on as it was.
      const double from = now.last;
      now = next.isSeen ? next : Span{from, from, from, true};
      const double top = heightOf(std::max(now.high, from), trace);
      const double bottom = heightOf(std::min(now.low, from), trace);
      canvas.box(leftMargin + x, std::floor(top) - 1.0, 1.0,
                 std::max(2.0, std::ceil(bottom - top) + 1.0), colourOf(trace));
    }
  }
  if (!canvas.writeTo(file)) file.throwFault();
  file.commit();
}

}  // namespace orvantesco::cli
