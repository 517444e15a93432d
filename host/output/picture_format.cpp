#include "host/output/picture_format.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <limits>
#include <opencv2/imgcodecs.hpp>

#include "host/output/pyramid/deep_zoom_place.h"
#include "host/output/pyramid/pyramid.h"

namespace jqhost {
namespace {

constexpr char kGoodExtensions[] = "use .png, .tif, .bmp or .ppm";

struct Limit {
  const char* extension;
  const char* format;
  int side;
};

// JPEG's own limit is 65535; the encoder's (JPEG_MAX_DIMENSION) is a little lower.
constexpr Limit kLimits[] = {{".jpg", "JPEG", 65500},
                             {".jpeg", "JPEG", 65500},
                             {".jpe", "JPEG", 65500},
                             {".webp", "WebP", 16383},
                             {".png", "PNG", 1000000}};

const Limit* FindLimit(const std::string& path) {
  const std::string extension = PictureExtension(path);
  const auto* found = std::find_if(std::begin(kLimits), std::end(kLimits),
                                   [&](const Limit& l) { return extension == l.extension; });
  return found == std::end(kLimits) ? nullptr : found;
}

bool Encode(const std::string& extension, const cv::Mat& picture,
            std::vector<unsigned char>& bytes) {
  try {
    return cv::imencode(extension, picture, bytes) && !bytes.empty();
  } catch (const cv::Exception&) {
    return false;
  }
}

void CheckDeepZoom(const std::string& path) {
  if (!HasLibvips()) {
    throw InputError("cannot write '" + path +
                     "': Deep Zoom needs libvips, and this program was built without it (use "
                     ".ome.tif or .png)");
  }
  CheckDeepZoomPlace(path);
}

}  // namespace

std::string PictureExtension(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

void CheckPictureFormat(const std::string& path) {
  const PyramidKind kind = PyramidKindOf(path);
  if (kind == PyramidKind::kDeepZoom) CheckDeepZoom(path);
  if (kind != PyramidKind::kNone) return;
  const std::string extension = PictureExtension(path);
  if (extension.empty()) {
    throw InputError("cannot write '" + path + "': the name has no extension to tell the format (" +
                     kGoodExtensions + ")");
  }
  // Tried on a small picture: some formats are known but keep no colour or need
  // other samples.
  const cv::Mat sample(16, 16, CV_8UC3, cv::Scalar(200, 20, 90));
  std::vector<unsigned char> bytes;
  if (!Encode(extension, sample, bytes)) {
    throw InputError("cannot write '" + path + "': no picture of 8-bit colour can be written as '" +
                     extension + "' (" + kGoodExtensions + ")");
  }
  cv::Mat back;
  try {
    back = cv::imdecode(bytes, cv::IMREAD_UNCHANGED);
  } catch (const cv::Exception&) {
    return;  // written, but not readable here: the encoder has the last word
  }
  if (!back.empty() && (back.channels() < 3 || back.depth() != CV_8U)) {
    throw InputError("cannot write '" + path + "': '" + extension +
                     "' does not keep 8-bit colour (" + kGoodExtensions + ")");
  }
}

int LongestSide(const std::string& path) {
  const Limit* limit = FindLimit(path);
  return limit == nullptr ? std::numeric_limits<int>::max() : limit->side;
}

std::string WhyTooLarge(const std::string& path, cv::Size size) {
  if (std::max(size.width, size.height) <= LongestSide(path)) return std::string();
  const Limit* limit = FindLimit(path);
  return std::string(limit->format) + " holds at most " + std::to_string(limit->side) +
         " pixels a side, and the picture has " + std::to_string(size.width) + " x " +
         std::to_string(size.height) + " (use .png or .tif)";
}

std::vector<unsigned char> EncodePicture(const std::string& path, const cv::Mat& picture) {
  const std::string tooLarge = WhyTooLarge(path, picture.size());
  if (!tooLarge.empty()) throw FormatError("cannot write '" + path + "': " + tooLarge);
  std::vector<unsigned char> bytes;
  if (!Encode(PictureExtension(path), picture, bytes)) {
    throw FormatError("cannot write '" + path + "': its format does not take a picture of " +
                      std::to_string(picture.cols) + " x " + std::to_string(picture.rows) +
                      " pixels (" + kGoodExtensions + ")");
  }
  return bytes;
}

}  // namespace jqhost
