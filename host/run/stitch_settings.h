#ifndef JQHOST_RUN_STITCH_SETTINGS_H
#define JQHOST_RUN_STITCH_SETTINGS_H

namespace jqhost {

/// The parameters of a run, as the stitcher gets them.
struct StitchSettings {
  int overlapMode = 0;     ///< 0: overlap test, 1: motion test
  int detectLevel = 1;     ///< working-scale divisor
  int cornerBudget = 8;    ///< more corners, slower and surer
  bool usePresets = true;  ///< false for what the stitcher sets in a batch run
};

/// What the stitcher sets for a batch run.
inline StitchSettings BatchSettings() {
  StitchSettings settings;
  settings.usePresets = false;
  return settings;
}

}  // namespace jqhost

#endif  // JQHOST_RUN_STITCH_SETTINGS_H
