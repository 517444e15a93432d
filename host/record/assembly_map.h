#ifndef JQHOST_RECORD_ASSEMBLY_MAP_H
#define JQHOST_RECORD_ASSEMBLY_MAP_H

#include <string>

#include "host/record/run_record.h"

namespace jqhost {

/// The pairs between frames of the picture as SVG lines from middle to middle, in picture
/// pixels.
struct PairLines {
  std::string used;
  std::string thrownOut;  ///< looked sound, but break loops
  std::string doubted;    ///< other pairs with enough matches that do not count
};

/// Lines of the record's assembly, which is there. Each tells its frames and numbers when
/// the pointer rests on it.
PairLines DrawPairLines(const RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RECORD_ASSEMBLY_MAP_H
