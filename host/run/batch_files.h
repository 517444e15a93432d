#ifndef JQHOST_RUN_BATCH_FILES_H
#define JQHOST_RUN_BATCH_FILES_H

#include <memory>
#include <string>
#include <vector>

#include "host/run/stop_token.h"
#include "host/source/frame_preparation.h"
#include "host/source/picture_pages.h"
#include "host/system/temporary_folder.h"
#include "host/verdict/doubt/placement_view.h"

namespace jqhost {

/// A file as a batch run hands it to the stitcher.
struct BatchFile {
  std::string name;  ///< as people know it
  std::string path;  ///< where the stitcher reads it
  std::string why;   ///< what speaks against it; empty: nothing so far
  /// Of the picture, from when it was prepared; where they are empty, a session reads the
  /// file again.
  ReducedFrame reduced = {};
  std::vector<unsigned char> thumbnail = {};
};

/// Makes files for the stitcher's batch slot, which reads by itself and knows only
/// 8 bits and the first page: pages of TIFFs, 16-bit pictures and those to be
/// corrected are written, prepared and without loss, to a temporary folder. All
/// other files are handed over as they are.
class BatchFiles {
 public:
  /// @param maxPixels larger pictures are not decoded
  /// @param thumbnails whether the files get one
  /// Looks at every picture; after a requested stop it only names the rest. Raises
  /// `InputError` when temporary files cannot be written.
  BatchFiles(const std::vector<PictureId>& pictures, FramePreparation& preparation,
             std::int64_t maxPixels, const StopToken& stop, bool thumbnails = false);

  const std::vector<BatchFile>& Files() const { return m_files; }

 private:
  BatchFile Prepare(const PictureId& picture, FramePreparation& preparation,
                    std::int64_t maxPixels);

  const bool m_thumbnails;
  std::unique_ptr<TemporaryFolder> m_folder;  // made when it is needed
  std::vector<BatchFile> m_files;
};

}  // namespace jqhost

#endif  // JQHOST_RUN_BATCH_FILES_H
