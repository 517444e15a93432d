#ifndef JQSCOPE_WORK_BATCH_RUN_H
#define JQSCOPE_WORK_BATCH_RUN_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/run/batch_files.h"
#include "host/run/batch_session.h"
#include "host/run/run_observer.h"
#include "host/run/stop_token.h"
#include "host/source/frame_preparation.h"
#include "view/tile_pyramid.h"
#include "work/run_report.h"
#include "work/snapshot.h"

namespace jqscope {

/// Which files are to be stitched as a batch.
struct BatchOrder {
  std::vector<std::string> paths;  ///< pictures and folders of pictures
  jqhost::PreparationSettings preparation;
  std::shared_ptr<const jqhost::StopToken> stop;  ///< ends it after the file in hand
};

/// Stitches files as a batch and tells how far it is; files that cannot be used are left
/// out and named. The picture stays for the view and for saving. Used by the stitching
/// thread alone.
class BatchRun : private jqhost::RunObserver {
 public:
  /// @param tiles, report must outlive the object: what is shown of the batch
  /// @param tell called whenever the report has changed
  BatchRun(BatchOrder order, TilePyramid& tiles, RunReport& report, std::function<void()> tell);

  /// To be called once. Raises nothing: what goes wrong is told in the report.
  void Run();

  /// Brings back the tiles that the view asks for.
  bool PaintWanted();
  /// The picture, which shares its pixels: nothing writes into them any more.
  Snapshot TakeSnapshot(bool trim) const;

 private:
  void OnBegin(int total) override;
  void OnFrame(const jqhost::FrameResult& result, int done) override;
  void Stitch();
  void Paint();

  const BatchOrder m_order;
  TilePyramid& m_tiles;
  RunReport& m_report;
  const std::function<void()> m_tell;
  jqhost::FramePreparation m_preparation;
  std::unique_ptr<jqhost::BatchFiles> m_files;  // holds the temporary ones
  std::unique_ptr<jqhost::BatchSession> m_session;
  cv::Mat m_mosaic;    // once all is done
  cv::Point m_origin;  // the first frame's corner in it
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_BATCH_RUN_H
