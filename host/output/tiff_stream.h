#ifndef JQHOST_OUTPUT_TIFF_STREAM_H
#define JQHOST_OUTPUT_TIFF_STREAM_H

#include <tiffio.h>

#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"

namespace jqhost {

/// A TIFF while it is written. What the TIFF library has to say comes back as
/// `InputError` with the picture's path.
class TiffStream {
 public:
  /// @param file where the bytes go
  /// @param big whether offsets have 64 bits
  TiffStream(const SaveOptions& options, const std::string& file, bool big);
  ~TiffStream();
  TiffStream(const TiffStream&) = delete;
  TiffStream& operator=(const TiffStream&) = delete;

  TIFF* Get() { return m_tiff; }
  /// Sets what all pictures have: size, samples, colour, packing and, where known, the
  /// pixel size.
  void BeginPicture(const PixelSource& pixels, Compression compression);
  /// Raises unless the result of a call tells success.
  void Check(bool succeeded) const;
  /// Writes the tables of the picture and begins the next.
  void EndPicture() { Check(TIFFWriteDirectory(m_tiff) == 1); }
  /// Writes what is still in memory and closes the file.
  void Close();

 private:
  static int OnError(TIFF*, void* self, const char* module, const char* format, va_list values);
  static int OnWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }

  const SaveOptions& m_options;
  std::string m_error;  // the first one
  TIFF* m_tiff = nullptr;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_TIFF_STREAM_H
