#ifndef JQSTITCH_SIMULATE_OUTPUT_FOLDER_H
#define JQSTITCH_SIMULATE_OUTPUT_FOLDER_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqstitch {

/// A folder of numbered frames and their `truth.csv`. Every failure raises
/// `InputError`.
class OutputFolder {
 public:
  /// Makes the folder (and its parents). A folder that holds anything is refused
  /// unless `force`; then the frames and the truth of an earlier simulation are
  /// removed and other files are left alone.
  /// @param jpegQuality 1 to 100, or 0 for PNG
  /// @param stream the frames go to a video
  OutputFolder(const std::string& path, bool force, int frameCount, int jpegQuality,
               bool stream = false);

  /// Where the video goes.
  std::string VideoPath() const;

  /// "frame_0007.png": numbered from 1, with as many digits as the last needs,
  /// at least four. In a video "frame 7", as a live run calls it.
  std::string FrameName(int index) const;

  void WriteFrame(int index, const cv::Mat& image) const;

  /// Writes `truth.csv`: a line "file,x,y" and one line per frame. Call it last:
  /// a folder without it is of a simulation that did not end.
  void WriteTruth(const std::vector<cv::Point>& corners) const;

 private:
  std::string m_path;
  int m_digits;
  int m_jpegQuality;
  bool m_stream;
};

}  // namespace jqstitch

#endif  // JQSTITCH_SIMULATE_OUTPUT_FOLDER_H
