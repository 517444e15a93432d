#include "host/doubt_passes.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqimagestitching.h"

namespace jqbench {
namespace {

void Soil(cv::Mat& frame, Dirt dirt, cv::RNG& random) {
  const double much = dirt == Dirt::kFilthy ? 1.0 : 0.5;
  const double blur = random.uniform(0.0, 2.0 * much);
  if (blur > 0.3) cv::GaussianBlur(frame, frame, cv::Size(), blur);
  cv::Mat light(frame.size(), CV_32FC3), noise(frame.size(), CV_32FC3);
  const double gain = 1 + random.uniform(-0.2, 0.2) * much;
  const double reach = frame.cols * frame.cols + frame.rows * frame.rows;
  for (int y = 0; y < frame.rows; ++y) {
    for (int x = 0; x < frame.cols; ++x) {
      const double u = 2 * x - frame.cols, v = 2 * y - frame.rows;
      light.at<cv::Vec3f>(y, x) =
          cv::Vec3f::all(static_cast<float>(gain * (1 - 0.5 * much * (u * u + v * v) / reach)));
    }
  }
  random.fill(noise, cv::RNG::NORMAL, 0.0, random.uniform(4.0, 16.0) * much);
  cv::Mat sum;
  frame.convertTo(sum, CV_32FC3);
  sum = sum.mul(light) + noise;
  sum.convertTo(frame, CV_8UC3);
  frame = cv::max(frame, cv::Scalar(1, 1, 1));
}

}  // namespace

Pass TakePass(const cv::Mat& scene, cv::Size frame, int count, Motion motion, Dirt dirt,
              std::uint64_t seed) {
  cv::RNG random(seed);
  const cv::Size room = scene.size() - frame;
  Pass pass;
  cv::Point at(random.uniform(0, room.width + 1), random.uniform(0, room.height + 1));
  while (static_cast<int>(pass.frames.size()) < count) {
    cv::Mat picture = scene(cv::Rect(at, frame)).clone();
    if (dirt != Dirt::kClean) Soil(picture, dirt, random);
    pass.frames.push_back(picture);
    pass.corners.push_back(at);
    const cv::Rect inside(cv::Point(), room + cv::Size(1, 1));
    cv::Point next(-1, -1);
    while (!inside.contains(next)) {
      double along = random.uniform(0.2, 0.7), aside = random.uniform(-0.15, 0.15);
      if (random.uniform(0, 2) == 0) along = -along;
      if (motion == Motion::kAnywhere)
        along = random.uniform(-1.1, 1.1), aside = random.uniform(-1.1, 1.1);
      if (random.uniform(0, 2) == 0) std::swap(along, aside);
      next = at + cv::Point(cvRound(along * frame.width), cvRound(aside * frame.height));
    }
    at = next;
  }
  return pass;
}

std::vector<Placement> StitchBatch(const std::vector<cv::Mat>& frames, const std::string& folder) {
  JQImageStitching stitcher;
  for (size_t i = 0; i < frames.size(); ++i) {
    const std::string path = folder + "/" + std::to_string(i) + ".bmp";
    cv::imwrite(path, frames[i]);
    stitcher.m_fileList.append(QString::fromStdString(path));
  }
  std::vector<Placement> placements;
  int frame = 0, before = 0;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus, [&](const QString&) {
    if (frame > 0 && stitcher.IsLastFrameAccepted()) {
      const stitchflags flags = stitcher.GetStitchFlags();
      placements.push_back({frame, before, cv::Point(flags.offsetX, flags.offsetY),
                            flags.matchCount, stitcher.GetLastVerdict().pairCount});
      before = frame;
    }
    ++frame;
  });
  try {
    QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);
  } catch (const cv::Exception&) {
    // The run ended early; what was placed until then counts.
  }
  return placements;
}

}  // namespace jqbench
