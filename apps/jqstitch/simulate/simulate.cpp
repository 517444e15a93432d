#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <optional>

#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/picture_format.h"
#include "host/simulate/slide.h"
#include "host/source/frame_preparation.h"
#include "host/source/picture_pages.h"
#include "host/system/free_memory.h"
#include "simulate/output_folder.h"
#include "simulate/simulate_options.h"
#include "simulate/video_file.h"

namespace jqstitch {
namespace {

constexpr int kMargin = 16;         // of slide around the path, for the blur
constexpr int kStreamQuality = 95;  // of the JPEGs in a video

std::string Text(cv::Size size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

jqhost::PathOptions ToPathOptions(const SimulateOptions& o) {
  jqhost::PathOptions path;
  path.kind = o.path;
  path.count = o.count;
  path.step.x = std::max(1, static_cast<int>(std::lround(o.frame.width * o.step / 100)));
  path.step.y = std::max(1, static_cast<int>(std::lround(o.frame.height * o.step / 100)));
  path.direction = o.direction;
  path.columns = o.columns;
  path.jumps = o.jumps;
  path.frame = o.frame;
  path.seed = o.seed;
  return path;
}

// The longest way that a path can go, so that no coordinate overflows.
void RefuseEndlessPath(const jqhost::PathOptions& path) {
  const std::int64_t longest =
      static_cast<std::int64_t>(path.count) * std::max(path.step.x, path.step.y) * 2;
  if (longest > 1000000000) {
    throw jqhost::InputError(
        "the path is too long: give fewer frames, smaller ones or a smaller --step");
  }
}

// Any picture: grey or colour, 8 bits or more, as a live run would take it.
cv::Mat ReadScene(const std::string& path) {
  std::string why;
  cv::Mat image = jqhost::ReadStored({path, 0}, why);
  if (!why.empty()) throw jqhost::InputError("cannot read the picture '" + path + "': " + why);
  image = jqhost::FramePreparation(jqhost::PreparationSettings()).Prepare(image);
  if (image.channels() == 1) cv::cvtColor(image, image, cv::COLOR_GRAY2BGR);
  return image;
}

// The system would promise more memory than it has, and end the program later.
void RefuseLargerThanMemory(cv::Size size) {
  const double needed = 3.0 * size.width * size.height;
  const auto free = static_cast<double>(jqhost::FreeMemory());
  if (free == 0 || needed <= free) return;
  const auto gigabytes = [](double bytes) {
    return std::to_string(static_cast<std::int64_t>(std::ceil(bytes / 1e9))) + " GB";
  };
  throw jqhost::InputError("the slide would have " + Text(size) + " pixels and take " +
                           gigabytes(needed) + " of memory, of which " + gigabytes(free) +
                           " are free: give fewer or smaller frames, or a smaller --step");
}

cv::Mat OpenScene(const SimulateOptions& o, cv::Size bounds) {
  if (!o.image.empty()) {
    cv::Mat image = ReadScene(o.image);
    if (image.cols < bounds.width || image.rows < bounds.height) {
      throw jqhost::InputError("the path needs " + Text(bounds) + " pixels, but '" + o.image +
                               "' has " + Text(image.size()) +
                               ": give a larger picture, smaller or fewer frames, a smaller "
                               "--step or fewer --jumps");
    }
    return image;
  }
  const cv::Size size(bounds.width + 2 * kMargin, bounds.height + 2 * kMargin);
  RefuseLargerThanMemory(size);
  return jqhost::PaintSlide(size, o.seed);
}

}  // namespace

void Simulate(const SimulateOptions& options, Console& console) {
  const jqhost::PathOptions pathOptions = ToPathOptions(options);
  RefuseEndlessPath(pathOptions);
  std::vector<cv::Point> path = jqhost::CameraPath(pathOptions);
  if (!options.scene.empty()) jqhost::CheckPictureFormat(options.scene);
  const cv::Mat scene = OpenScene(options, jqhost::PathBounds(path, options.frame).size());
  jqhost::MovePathInside(path, options.frame, scene.size());

  const OutputFolder folder(options.folder, options.force, options.count, options.jpegQuality,
                            options.stream);
  if (!options.scene.empty()) {
    const std::vector<unsigned char> bytes = jqhost::EncodePicture(options.scene, scene);
    jqhost::WriteFileAtomically(options.scene, bytes.data(), bytes.size());
  }
  std::optional<VideoFile> video;
  if (options.stream) {
    const int quality = options.jpegQuality > 0 ? options.jpegQuality : kStreamQuality;
    video.emplace(folder.VideoPath(), options.frame, quality);
  }
  console.StartProgress(options.count, "frames");
  for (int i = 0; i < options.count; ++i) {
    const cv::Mat frame = jqhost::TakeFrame(scene, path[static_cast<std::size_t>(i)], options.frame,
                                            i, options.effects, options.seed);
    if (video) {
      video->Write(frame);
    } else {
      folder.WriteFrame(i, frame);
    }
    console.Progress(i + 1);
  }
  if (video) video->Close();
  console.EndProgress();
  folder.WriteTruth(path);
  console.Say(std::to_string(options.count) + (options.count == 1 ? " frame of " : " frames of ") +
              Text(options.frame) + " in '" +
              (options.stream ? folder.VideoPath() : options.folder) + "', scene " +
              Text(scene.size()) + ", truth in truth.csv");
}

}  // namespace jqstitch
