#include "host/output/tiff_stream.h"

#include <cstdarg>
#include <cstdio>

#include "host/input_error.h"

namespace jqhost {
namespace {

int TiffCompression(Compression compression) {
  switch (compression) {
    case Compression::kNone:
      return COMPRESSION_NONE;
    case Compression::kLzw:
      return COMPRESSION_LZW;
    case Compression::kZstd:
      return COMPRESSION_ZSTD;
    case Compression::kJpeg:
      return COMPRESSION_JPEG;
    case Compression::kDeflate:
      break;
  }
  return COMPRESSION_ADOBE_DEFLATE;
}

}  // namespace

TiffStream::TiffStream(const SaveOptions& options, const std::string& file, bool big)
    : m_options(options) {
  TIFFOpenOptions* open = TIFFOpenOptionsAlloc();
  TIFFOpenOptionsSetErrorHandlerExtR(open, OnError, this);
  TIFFOpenOptionsSetWarningHandlerExtR(open, OnWarning, nullptr);
  m_tiff = TIFFOpenExt(file.c_str(), big ? "w8" : "w", open);
  TIFFOpenOptionsFree(open);
  Check(m_tiff != nullptr);
}

TiffStream::~TiffStream() {
  if (m_tiff != nullptr) TIFFClose(m_tiff);
}

void TiffStream::BeginPicture(const PixelSource& pixels, Compression compression) {
  const bool grey = pixels.Channels() == 1, isJpeg = compression == Compression::kJpeg;
  TIFFSetField(m_tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(pixels.Size().width));
  TIFFSetField(m_tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(pixels.Size().height));
  TIFFSetField(m_tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(m_tiff, TIFFTAG_SAMPLESPERPIXEL, pixels.Channels());
  TIFFSetField(m_tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(m_tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  Check(TIFFSetField(m_tiff, TIFFTAG_COMPRESSION, TiffCompression(compression)) == 1);
  if (isJpeg) {
    TIFFSetField(m_tiff, TIFFTAG_JPEGQUALITY, m_options.quality);
    // The library turns the colours round; JPEG keeps brightness apart from them.
    if (!grey) TIFFSetField(m_tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  } else if (compression != Compression::kNone) {
    TIFFSetField(m_tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  }
  TIFFSetField(m_tiff, TIFFTAG_PHOTOMETRIC,
               grey     ? PHOTOMETRIC_MINISBLACK
               : isJpeg ? PHOTOMETRIC_YCBCR
                        : PHOTOMETRIC_RGB);
}

void TiffStream::Check(bool succeeded) const {
  if (succeeded) return;
  throw InputError("cannot write '" + m_options.path +
                   "': " + (m_error.empty() ? "the TIFF library refuses the picture" : m_error));
}

void TiffStream::Close() {
  const bool flushed = TIFFFlush(m_tiff) == 1;
  TIFFClose(m_tiff);
  m_tiff = nullptr;
  Check(flushed && m_error.empty());
}

int TiffStream::OnError(TIFF*, void* self, const char*, const char* format, va_list values) {
  std::string& error = static_cast<TiffStream*>(self)->m_error;
  if (!error.empty()) return 1;
  char text[512];
  std::vsnprintf(text, sizeof text, format, values);
  error = text;
  return 1;
}

}  // namespace jqhost
