#ifndef JQPYTHON_FILE_RUN_H
#define JQPYTHON_FILE_RUN_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/output/save_options.h"
#include "host/record/run_record.h"
#include "host/run/run_observer.h"
#include "host/run/stop_token.h"
#include "verdict.h"

namespace jqpython {

/// A batch run that came to its end.
struct FileRun {
  jqhost::RunRecord record;
  cv::Mat mosaic;          ///< blue, green, red; read only
  cv::Rect placed;         ///< the picture in it: what the frames cover
  bool onlyFirst = false;  ///< there is no mosaic, so it is the first frame

  cv::Mat Picture(bool trim) const { return trim ? mosaic(placed) : mosaic; }
};

/// Stitches picture files and folders, as `jqstitch batch` does. Raises `InputError` where
/// the run is refused, with every bad file's name and what speaks against it.
/// @param stop ends the run after the file in hand
FileRun StitchFiles(const std::vector<std::string>& paths, bool skipBad,
                    const jqhost::StopToken& stop, jqhost::RunObserver& observer);

/// What became of each file; positions are pixels of the trimmed picture.
std::vector<Verdict> VerdictsOf(const FileRun& run);
Verdict VerdictOf(const jqhost::FrameResult& frame);

/// How to save it. @param pixelSize of a frame, metres; 0: not known
jqhost::SaveOptions SaveOptionsOf(const FileRun& run, const std::string& path, double pixelSize);

/// The report as JSON, or as an HTML page.
std::string JsonReportOf(const jqhost::RunRecord& record);
std::string HtmlReportOf(const jqhost::RunRecord& record, const cv::Mat& picture);

}  // namespace jqpython

#endif  // JQPYTHON_FILE_RUN_H
