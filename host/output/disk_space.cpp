#include "host/output/disk_space.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "host/input_error.h"
#include "host/output/pyramid/pyramid.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr int kBlocks = 8;  // along each side
constexpr int kBlock = 128;
constexpr double kSurelyNeeded = 0.8;

// Blocks at even distances, side by side.
cv::Mat Sample(const PixelSource& pixels) {
  const cv::Size size = pixels.Size();
  const cv::Size block(std::min(kBlock, std::max(1, size.width / kBlocks)),
                       std::min(kBlock, std::max(1, size.height / kBlocks)));
  const cv::Size count(std::min(kBlocks, size.width / block.width),
                       std::min(kBlocks, size.height / block.height));
  cv::Mat sample(block.height * count.height, block.width * count.width, CV_8UC(pixels.Channels()));
  for (int r = 0; r < count.height; ++r) {
    for (int c = 0; c < count.width; ++c) {
      cv::Mat to = sample(cv::Rect(cv::Point(c * block.width, r * block.height), block));
      const cv::Point from(static_cast<int>(std::int64_t{c} * size.width / count.width),
                           static_cast<int>(std::int64_t{r} * size.height / count.height));
      pixels.Read(cv::Rect(from, block), to);
    }
  }
  return sample;
}

// LZW packs less than deflate and zstd about the same; for all of them the smaller counts.
double PackedSize(const cv::Mat& sample, const SaveOptions& options, PyramidKind kind) {
  if (kind == PyramidKind::kOmeTiff && options.compression == Compression::kNone) {
    return static_cast<double>(sample.total() * sample.elemSize());
  }
  std::vector<unsigned char> bytes;
  if (kind != PyramidKind::kNone && options.compression == Compression::kJpeg) {
    cv::imencode(".jpg", sample, bytes, {cv::IMWRITE_JPEG_QUALITY, options.quality});
  } else if (kind != PyramidKind::kNone) {
    cv::imencode(".png", sample, bytes,
                 {cv::IMWRITE_PNG_COMPRESSION, 6, cv::IMWRITE_PNG_STRATEGY,
                  cv::IMWRITE_PNG_STRATEGY_DEFAULT});
  } else {
    cv::imencode(".png", sample, bytes);
  }
  return static_cast<double>(bytes.size());
}

}  // namespace

std::string BytesText(double bytes) {
  char text[48];
  if (bytes >= 1e9) {
    std::snprintf(text, sizeof text, "%.1f GB", bytes / 1e9);
  } else if (bytes >= 1e6) {
    std::snprintf(text, sizeof text, "%.0f MB", bytes / 1e6);
  } else {
    std::snprintf(text, sizeof text, "%.0f kB", bytes / 1e3);
  }
  return text;
}

double EstimateBytes(const PixelSource& pixels, const SaveOptions& options) {
  const PyramidKind kind = PyramidKindOf(options.path);
  const cv::Mat sample = Sample(pixels);
  const double each = PackedSize(sample, options, kind) / static_cast<double>(sample.total());
  const double first = each * pixels.Size().width * pixels.Size().height;
  return kind == PyramidKind::kNone ? first : first * 4 / 3;
}

void CheckDiskSpace(const PixelSource& pixels, const SaveOptions& options) {
  const double needed = EstimateBytes(pixels, options);
  const fs::path folder = fs::path(options.path).parent_path();
  std::error_code error;
  const fs::space_info space = fs::space(folder.empty() ? "." : folder, error);
  if (error || static_cast<double>(space.available) >= kSurelyNeeded * needed) return;
  throw InputError("cannot write '" + options.path + "': it needs about " + BytesText(needed) +
                   ", and " + BytesText(static_cast<double>(space.available)) +
                   " are free (free some space, or choose another disk)");
}

}  // namespace jqhost
