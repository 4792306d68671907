#include "params/dispatch/StateMigrationRules.h"

#include <cstddef>

#include "core/StateMigration.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"
#include "presets/PresetMigration.h"

namespace orvantesco {

namespace {

// The first state versions without the need for a rule.
constexpr int kStateQuietTappedMix = 0x10200;   // the route "MIX" of a tapped delay became louder
constexpr int kStateLongerTypeMenus = 0x10161;  // the menu of the feedback stage got an entry
constexpr int kStateLongerPreMenus = 0x10160;   // those of the other stages too

bool within(int index, int base) { return index >= base && index < base + numSlots; }

/// Ends the migration of the whole restore where it applies: what later parameters hold stays.
bool quietenTappedMix(const ParamDispatch& change, double route) {
  if (!within(change.paramIdx, kDelayRoute) || route != kMixRoute) return false;
  const int slot = change.paramIdx - kDelayRoute;
  StateMigration& migration = change.migration();
  if (!migration.wasTapped[static_cast<std::size_t>(slot)]) return false;
  const int feedback = kFeedback + slot;
  change.storeValue(feedback, change.valueOf(feedback) * kTappedMixLoss);
  migration.version = 0;
  change.dispatch(feedback);
  return true;
}

/// Menu positions behind an entry that has been put in move up by one.
double renumbered(int paramIdx, double position, int version) {
  if (within(paramIdx, kFxTypeFeedback)) return position > 12.0 ? position + 1.0 : position;
  const bool otherStage = within(paramIdx, kFxTypePre) || within(paramIdx, kFxTypePost);
  if (!otherStage || version >= kStateLongerPreMenus) return position;
  return position > 17.0 ? position + 1.0 : position;
}

}  // namespace

double migratedValue(const ParamDispatch& change, double value) {
  StateMigration& migration = change.migration();
  const int version = migration.version;
  if (version <= 0 || version >= kStateQuietTappedMix || !change.restoredHere()) return value;
  if (within(change.paramIdx, kDelayMode)) {
    migration.wasTapped[static_cast<std::size_t>(change.paramIdx - kDelayMode)] =
        value == kTappedMode;
  }
  if (quietenTappedMix(change, value) || version >= kStateLongerTypeMenus) return value;
  change.storeValue(change.paramIdx, renumbered(change.paramIdx, value, version));
  return change.valueOf(change.paramIdx);
}

}  // namespace orvantesco
