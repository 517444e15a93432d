#ifndef JQHOST_SOURCE_FRAME_SOURCE_H
#define JQHOST_SOURCE_FRAME_SOURCE_H

#include <memory>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/source/camera_mode.h"
#include "host/source/picture_reader.h"

namespace jqhost {

/// One frame of a live run.
struct SourceFrame {
  std::string name;  ///< the file's path (and page), or "frame 12" of a video or camera
  int number = 0;    ///< counted in the source, from 1
  cv::Mat image;     ///< empty when the frame cannot be used
  std::string why;   ///< then the cause
};

/// Where the frames of a live run come from.
class FrameSource {
 public:
  virtual ~FrameSource() = default;
  /// The next frame, or false at the end. Without `read` the frame is passed over
  /// and `image` stays empty.
  virtual bool Next(SourceFrame& frame, bool read) = 0;
  /// Frames in all; 0 when nobody knows.
  virtual int Total() const = 0;
  /// Whether the source is a list of files, whose end is known by name.
  virtual bool IsFileList() const = 0;
  /// Whether the next frame can be long in coming: a camera, a stream, a folder that
  /// grows. What is known is told before such a source is asked.
  virtual bool Waits() const { return false; }
  /// Whether it is a video of 16 bits a sample, of which the reader gives the high bytes:
  /// samples of 12 significant bits turn dark. (It scales formats that know their depth.)
  virtual bool GivesHighBytes() const { return false; }
  /// Holds exposure and white balance as they are, or gives them back to the camera. Between
  /// two frames. @return whether the camera does all of that
  virtual bool HoldLight(bool hold) {
    (void)hold;
    return false;
  }
};

/// Opens pictures, folders, one video file, a network stream by its address
/// ("rtsp://..."), or a camera by its number. A path that exists wins over a camera of that number.
/// Raises `InputError`.
/// @param leftOut pictures that the run itself writes, not taken from folders
/// @param maxPixels larger pictures are not decoded
std::unique_ptr<FrameSource> OpenFrameSource(const std::vector<std::string>& source,
                                             const std::vector<std::string>& leftOut,
                                             std::int64_t maxPixels = kMostPixels);

/// The same for a list of pictures. Every page of a TIFF is a frame.
std::unique_ptr<FrameSource> MakeFileSource(const std::vector<std::string>& files,
                                            std::int64_t maxPixels = kMostPixels);

/// A video file (`path`) or camera (`number`, when `path` is empty). Raises
/// `InputError`.
/// @param mode asked of a camera, which may give the next best
std::unique_ptr<FrameSource> MakeVideoSource(const std::string& path, int number,
                                             const CameraMode& mode = {});

}  // namespace jqhost

#endif  // JQHOST_SOURCE_FRAME_SOURCE_H
