#include "host/output/save_picture.h"

#include <filesystem>
#include <system_error>

#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/atomic_folder.h"
#include "host/output/disk_space.h"
#include "host/output/mosaic_pixels.h"
#include "host/output/picture.h"
#include "host/output/picture_format.h"
#include "host/output/png_file.h"
#include "host/output/pyramid/deep_zoom_place.h"
#include "host/output/pyramid/pyramid.h"
#include "host/output/scale_bar.h"
#include "host/output/tiff_file.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

// A disk that is full to the last bytes is the cause, whatever a library calls it.
constexpr std::uintmax_t kFull = std::uintmax_t{1} << 20;

[[noreturn]] void RaiseOrTellFullDisk(const SaveOptions& options) {
  std::error_code error;
  const fs::path folder = fs::path(options.path).parent_path();
  const fs::space_info space = fs::space(folder.empty() ? "." : folder, error);
  if (!error && space.available < kFull) {
    throw InputError(
        WriteFailure(options.path, std::make_error_code(std::errc::no_space_on_device)));
  }
  throw;
}

enum class Way { kPng, kTiff, kDeepZoom, kWhole };

Way WayOf(const SaveOptions& options) {
  const PyramidKind kind = PyramidKindOf(options.path);
  if (kind == PyramidKind::kDeepZoom) return Way::kDeepZoom;
  if (kind == PyramidKind::kOmeTiff) return Way::kTiff;
  const std::string extension = PictureExtension(options.path);
  if (extension == ".png") return Way::kPng;
  // The image library's resolution tags hold whole numbers only.
  const bool isTiff = extension == ".tif" || extension == ".tiff";
  return isTiff && options.pixelSize ? Way::kTiff : Way::kWhole;
}

std::optional<ScaleBar> PlannedScaleBar(cv::Size size, const SaveOptions& options) {
  if (!options.scaleBar || !options.pixelSize) return std::nullopt;
  return PlanScaleBar(size, options.pixelSize->width);
}

bool SaveDeepZoom(const PixelSource& pixels, const SaveOptions& options,
                  const SaveProgress& progress, const StopToken& stop) {
  CheckDeepZoomPlace(options.path);
  const AtomicFolder folder(options.path);
  try {
    if (!WriteDeepZoom(pixels, options, folder.Path(), "picture", progress, stop)) return false;
  } catch (const InputError&) {
    RaiseOrTellFullDisk(options);
  }
  folder.Flush();
  MoveDeepZoom(folder.Path(), options.path);
  return true;
}

bool SaveTiff(const PixelSource& pixels, const SaveOptions& options, const SaveProgress& progress,
              const StopToken& stop) {
  AtomicFile file(options.path);
  const auto write =
      PyramidKindOf(options.path) == PyramidKind::kOmeTiff ? &WriteOmeTiff : &WriteTiff;
  try {
    if (!write(pixels, options, file.TemporaryPath(), progress, stop)) return false;
  } catch (const InputError&) {
    RaiseOrTellFullDisk(options);
  }
  file.Commit();
  return true;
}

bool SavePng(const PixelSource& pixels, const SaveOptions& options, const SaveProgress& progress,
             const StopToken& stop) {
  AtomicFile file(options.path);
  if (!WritePng(pixels, options, file, progress, stop)) return false;
  file.Commit();
  return true;
}

// The formats that only the image library writes, from a whole picture.
bool SaveWhole(const cv::Mat& view, const SaveOptions& options, const StopToken& stop) {
  cv::Mat whole = WithBackground(view, options.background);
  if (options.grey) whole = AsGrey(whole, options.background);
  if (const auto bar = PlannedScaleBar(whole.size(), options)) {
    whole = whole.clone();
    cv::Mat patch = whole(bar->place);
    DrawScaleBar(*bar, patch);
  }
  if (stop.Requested()) return false;
  const std::vector<unsigned char> bytes = EncodePicture(options.path, whole);
  if (stop.Requested()) return false;
  WriteFileAtomically(options.path, bytes.data(), bytes.size());
  return true;
}

std::string FreeName(const std::string& path) {
  std::error_code error;
  std::string name = path + ".png";
  for (int i = 2; fs::exists(name, error); ++i) {
    name = path + "." + std::to_string(i) + ".png";
  }
  return name;
}

}  // namespace

bool SavePixels(const PixelSource& pixels, const SaveOptions& options, const SaveProgress& progress,
                const StopToken& stop) {
  const std::string tooLarge = WhyTooLarge(options.path, pixels.Size());
  if (!tooLarge.empty()) throw FormatError("cannot write '" + options.path + "': " + tooLarge);
  CheckDiskSpace(pixels, options);
  switch (WayOf(options)) {
    case Way::kPng:
      return SavePng(pixels, options, progress, stop);
    case Way::kTiff:
      return SaveTiff(pixels, options, progress, stop);
    case Way::kDeepZoom:
      return SaveDeepZoom(pixels, options, progress, stop);
    case Way::kWhole:
      break;
  }
  throw InputError("cannot write '" + options.path + "': use .png");
}

bool SavePicture(const cv::Mat& view, const SaveOptions& options, const SaveProgress& progress,
                 const StopToken& stop) {
  if (WayOf(options) == Way::kWhole) return SaveWhole(view, options, stop);
  MosaicPixels pixels(view, options.background, options.grey);
  if (const auto bar = PlannedScaleBar(view.size(), options)) {
    cv::Mat patch(bar->place.size(), CV_8UC(pixels.Channels()));
    pixels.Read(bar->place, patch);
    DrawScaleBar(*bar, patch);
    pixels.Cover(bar->place, patch);
  }
  return SavePixels(pixels, options, progress, stop);
}

SavedPicture SavePictureSomehow(const cv::Mat& view, const SaveOptions& options,
                                const SaveProgress& progress, const StopToken& stop) {
  SavedPicture saved;
  SaveOptions chosen = options;
  try {
    if (SavePicture(view, options, progress, stop)) saved.path = options.path;
    return saved;
  } catch (const FormatError& error) {
    chosen.path = FreeName(options.path);
    saved.problem = std::string(error.what()) + "; saved as '" + chosen.path + "' instead";
  }
  if (SavePicture(view, chosen, progress, stop)) saved.path = chosen.path;
  return saved;
}

}  // namespace jqhost
