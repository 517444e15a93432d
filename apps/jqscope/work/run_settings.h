#ifndef JQSCOPE_WORK_RUN_SETTINGS_H
#define JQSCOPE_WORK_RUN_SETTINGS_H

#include <cstdint>
#include <string>
#include <vector>

#include "host/run/stitch_settings.h"
#include "host/source/frame_preparation.h"

namespace jqscope {

/// What a run is made with.
struct RunSettings {
  jqhost::StitchSettings stitch;
  jqhost::PreparationSettings preparation;
  /// Most bytes of the mosaic: a frame for which it would have to grow beyond is left out.
  /// 0: as much as the machine gives.
  std::int64_t mostMemory = 0;
  std::string journal;              ///< the folder that records the run; empty: none
  std::vector<std::string> source;  ///< for the journal: where the frames come from
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_RUN_SETTINGS_H
