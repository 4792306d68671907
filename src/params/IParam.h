#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <vector>

#include "fx/Shared.h"
#include "params/ParamForm.h"

namespace orvantesco {

/// Kind of a parameter; the numbers are what hosts and state readers know.
enum class ParamType { none = 0, boolean = 1, integer = 2, enumeration = 3, real = 4 };

/// How a parameter is called. The texts are copied, 31 characters at most.
struct ParamCaption {
  const char* name = "";
  const char* label = "";  ///< the unit
  const char* group = "";  ///< empty throughout this program
};

/// Range of a real number and the way it is shown.
struct DoubleRange {
  double min = 0.0;
  double max = 1.0;
  double step = 0.01;  ///< display and quantisation step
  double shape = 1.0;  ///< exponent of the normalised curve; 0 leaves the old one
};

struct IntRange {
  int min = 0;
  int max = 1;
};

/// Whether an init operation resets the value or leaves it; `yes` clears the display texts.
enum class KeepValue { no, yes };

/// The record of one parameter: its value, range, curve, name, unit and display texts.
///
/// Threads. The value may be read and written by any thread at any time; so may `setShape`,
/// `replaceDisplayText` and `selectForm`, and every reading operation: none of them locks or
/// allocates. The init operations, `setDisplayText` and `addForm` build the record; they belong
/// to one thread, before the record is shared.
///
/// Texts given to the record as display texts must outlive it.
class IParam {
 public:
  IParam();
  IParam(const IParam&) = delete;
  IParam& operator=(const IParam&) = delete;

  // ---- building ----

  /// `max` becomes the larger of the given maximum and min + step. The first init of a record
  /// fixes `type()` for good. Without `KeepValue::yes` the value becomes the default.
  void initDouble(const ParamCaption& caption, double defaultValue, const DoubleRange& range,
                  KeepValue keep = KeepValue::no);

  /// A whole number; `step` and `shape` are 1.
  void initInt(const ParamCaption& caption, int defaultValue, IntRange range,
               KeepValue keep = KeepValue::no);

  /// One of `count` entries, 0 .. max(1, count - 1). The texts are given by `setDisplayText`.
  void initEnum(const ParamCaption& caption, int defaultValue, int count,
                KeepValue keep = KeepValue::no);

  /// A switch, which shows "off" and "on".
  void initBool(const ParamCaption& caption, bool defaultValue);

  /// Appends an entry; with `clearFirst` all entries go first.
  void setDisplayText(int value, const char* text, bool clearFirst = false);

  /// Adds a form, selects it and returns its number (the first form of a record is 0). The init
  /// operations fill the selected form.
  int addForm();

  // ---- at run time, on any thread ----

  double value() const noexcept { return current; }
  /// Stores a value as it is, even out of range. What is not finite is refused.
  void setValue(double newValue) noexcept;

  /// Makes a form, built before, the one that counts. A number that does not exist does nothing.
  void selectForm(int number) noexcept;

  /// Stores the exponent of the curve unless it is 0.
  void setShape(double shape) noexcept;

  /// Overwrites the text of the first entry of `value`; without an entry nothing happens.
  void replaceDisplayText(int value, const char* text) noexcept;

  /// The text of the first entry with that value, else empty. Never null.
  const char* getDisplayText(int value) const noexcept;

  /// ((x - min) / (max - min)) ^ (1 / shape), with x the value held to min .. max.
  double toNormalized(double plain) const noexcept;
  double getNormalized() const noexcept { return toNormalized(value()); }

  /// min + (max - min) * position ^ shape, position held to 0..1, in whole steps unless the
  /// parameter is a double.
  double fromNormalized(double position) const noexcept;
  void setNormalized(double normalised) noexcept { setValue(fromNormalized(normalised)); }

  /// Writes what a person sees, without the unit: the display text of the value or the number
  /// with its decimals. `out` ends with a zero; a text that is too long is cut. The decimal sign
  /// is a point in every locale.
  void formatValue(double number, bool isNormalised, std::span<char> out,
                   bool useDisplayText = true) const noexcept;

  /// The unit that belongs behind `formatValue`: empty where the value shows a display text.
  const char* shownLabel(double plain) const noexcept;

  ParamType type() const noexcept { return kind; }
  bool negateDisplay() const noexcept { return false; }
  bool canAutomate() const noexcept { return true; }

  /// Name, range, curve and texts as one: take it once where two of them must agree. It stays
  /// readable as long as the record.
  const ParamForm& form() const noexcept { return *published.load(std::memory_order_acquire); }
  const char* name() const noexcept { return form().name.data(); }
  const char* label() const noexcept { return form().label.data(); }
  const char* group() const noexcept { return form().group.data(); }
  double defaultValue() const noexcept { return form().defaultValue; }
  double min() const noexcept { return form().min; }
  double max() const noexcept { return form().max; }
  double step() const noexcept { return form().step; }
  double shape() const noexcept { return form().shape; }
  int displayPrecision() const noexcept { return form().displayPrecision; }

 private:
  ParamForm& selected() noexcept { return *published.load(std::memory_order_acquire); }
  void fill(const ParamCaption& caption, double defaultValue, const DoubleRange& range,
            KeepValue keep);
  void fixType(ParamType type) noexcept;

  Shared<double> current{0.0};
  ParamType kind = ParamType::none;
  std::vector<std::unique_ptr<ParamForm>> forms;
  std::atomic<ParamForm*> published{nullptr};
};

}  // namespace orvantesco
