#ifndef JQHOST_OUTPUT_PYRAMID_VIPS_PIXELS_H
#define JQHOST_OUTPUT_PYRAMID_VIPS_PIXELS_H

#include <vips/vips.h>

#include <exception>
#include <mutex>
#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// A pixel source as libvips reads it. Starts libvips when the first one is made.
class VipsPixels {
 public:
  /// The arguments must outlive this. Raises `InputError` where libvips does not start.
  VipsPixels(const PixelSource& pixels, const SaveOptions& options, const SaveProgress& progress,
             const StopToken& stop);
  ~VipsPixels();
  VipsPixels(const VipsPixels&) = delete;
  VipsPixels& operator=(const VipsPixels&) = delete;

  VipsImage* Image() { return m_image; }

  /// What became of a save.
  /// @param result of the saving function of libvips: 0 when it succeeded
  /// @return true when it is saved, false when the stop token ended it; raises what the
  ///         source raised, else `InputError` with the cause that libvips tells
  bool Finish(int result);

 private:
  static int Generate(VipsRegion* region, void* sequence, void* self, void*, gboolean* stop);
  static void OnProgress(VipsImage* image, VipsProgress* progress, void* self);
  void Read(VipsRegion& region) const;

  const PixelSource& m_pixels;
  const SaveOptions& m_options;
  const SaveProgress& m_progress;
  const StopToken& m_stop;
  VipsImage* m_image = nullptr;
  std::mutex m_lock;  // of what follows: several threads read
  std::exception_ptr m_raised;
  bool m_stopped = false;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PYRAMID_VIPS_PIXELS_H
