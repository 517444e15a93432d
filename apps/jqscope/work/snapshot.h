#ifndef JQSCOPE_WORK_SNAPSHOT_H
#define JQSCOPE_WORK_SNAPSHOT_H

#include <memory>

#include "host/output/picture.h"

namespace jqscope {

/// The picture as it is at one moment, to be saved while other things go on.
struct Snapshot {
  jqhost::Picture picture;
  bool grey = false;  ///< all frames had one channel
  /// Set where the pixels are the run's own, so that nothing may write into them while any
  /// copy of this pointer is left.
  std::shared_ptr<const bool> shared;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_SNAPSHOT_H
