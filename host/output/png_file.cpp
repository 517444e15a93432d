#include "host/output/png_file.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <exception>
#include <vector>

#include "host/input_error.h"

namespace jqhost {
namespace {

constexpr int kRowsAtOnce = 64;
constexpr std::size_t kBuffer = std::size_t{1} << 20;
constexpr double kMostPerMetre = 2147483647.0;  // of a pHYs chunk

// The PNG library reports errors by a long jump, over whose frames nothing may lie that
// has to be destroyed. So each call of it stands in a function of its own, and what goes
// wrong inside is kept here.
class PngStream {
 public:
  explicit PngStream(AtomicFile& file) : m_file(file) {
    m_png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, OnError, OnWarning);
    if (m_png != nullptr) m_info = png_create_info_struct(m_png);
    if (m_info != nullptr) png_set_write_fn(m_png, this, OnWrite, OnFlush);
    m_buffer.reserve(kBuffer);
  }
  ~PngStream() { png_destroy_write_struct(&m_png, &m_info); }
  PngStream(const PngStream&) = delete;
  PngStream& operator=(const PngStream&) = delete;

  bool Begin(cv::Size size, int channels, const std::optional<cv::Size2d>& pixelSize) {
    if (m_info == nullptr || setjmp(png_jmpbuf(m_png)) != 0) return false;
    // The image library's own choice: quick rather than small.
    png_set_filter(m_png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_compression_level(m_png, Z_BEST_SPEED);
    png_set_compression_strategy(m_png, Z_RLE);
    png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(size.width),
                 static_cast<png_uint_32>(size.height), 8,
                 channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (pixelSize) SetPixelSize(*pixelSize);
    png_write_info(m_png, m_info);
    return true;
  }

  bool Row(const unsigned char* row) {
    if (setjmp(png_jmpbuf(m_png)) != 0) return false;
    png_write_row(m_png, row);
    return true;
  }

  bool End() {
    if (setjmp(png_jmpbuf(m_png)) != 0) return false;
    png_write_end(m_png, m_info);
    Flush();
    return true;
  }

  /// Raises why a call above failed.
  [[noreturn]] void Fail(const std::string& path) {
    if (m_raised) std::rethrow_exception(m_raised);
    throw InputError("cannot write '" + path + "': the PNG library refuses the picture");
  }

 private:
  void SetPixelSize(cv::Size2d size) {
    const double x = std::round(1.0 / size.width), y = std::round(1.0 / size.height);
    if (std::min(x, y) < 1.0 || std::max(x, y) > kMostPerMetre) return;
    png_set_pHYs(m_png, m_info, static_cast<png_uint_32>(x), static_cast<png_uint_32>(y),
                 PNG_RESOLUTION_METER);
  }

  void Flush() {
    m_file.Write(m_buffer.data(), m_buffer.size());
    m_buffer.clear();
  }

  void Take(const unsigned char* bytes, std::size_t size) {
    if (m_buffer.size() + size > kBuffer) Flush();
    m_buffer.insert(m_buffer.end(), bytes, bytes + size);
  }

  static void OnWrite(png_structp png, png_bytep bytes, png_size_t size) {
    PngStream& self = *static_cast<PngStream*>(png_get_io_ptr(png));
    try {
      self.Take(bytes, size);
      return;
    } catch (...) {
      self.m_raised = std::current_exception();
    }
    png_error(png, "write");
  }
  static void OnFlush(png_structp) {}
  static void OnError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
  static void OnWarning(png_structp, png_const_charp) {}

  AtomicFile& m_file;
  png_structp m_png = nullptr;
  png_infop m_info = nullptr;
  std::vector<unsigned char> m_buffer;
  std::exception_ptr m_raised;
};

}  // namespace

bool WritePng(const PixelSource& pixels, const SaveOptions& options, AtomicFile& file,
              const SaveProgress& progress, const StopToken& stop) {
  const cv::Size size = pixels.Size();
  PngStream stream(file);
  if (!stream.Begin(size, pixels.Channels(), options.pixelSize)) stream.Fail(options.path);
  cv::Mat rows(std::min(kRowsAtOnce, size.height), size.width, CV_8UC(pixels.Channels()));
  for (int y = 0; y < size.height; y += rows.rows) {
    if (stop.Requested()) return false;
    const int count = std::min(rows.rows, size.height - y);
    cv::Mat block = rows.rowRange(0, count);
    pixels.Read(cv::Rect(0, y, size.width, count), block);
    for (int r = 0; r < count; ++r) {
      if (!stream.Row(block.ptr(r))) stream.Fail(options.path);
    }
    if (progress) progress(static_cast<double>(y + count) / size.height);
  }
  if (!stream.End()) stream.Fail(options.path);
  return true;
}

}  // namespace jqhost
