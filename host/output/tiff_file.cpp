#include "host/output/tiff_file.h"

#include <algorithm>
#include <vector>

#include "host/output/halved_pixels.h"
#include "host/output/ome_xml.h"
#include "host/output/tiff_stream.h"

namespace jqhost {
namespace {

constexpr int kRowsInStrip = 64;

// Counts what is done of all levels.
class Count {
 public:
  Count(const SaveProgress& progress, double total) : m_progress(progress), m_total(total) {}
  void Add(const cv::Rect& area) {
    m_done += static_cast<double>(area.width) * area.height;
    if (m_progress) m_progress(std::min(1.0, m_done / m_total));
  }

 private:
  const SaveProgress& m_progress;
  double m_total, m_done = 0.0;
};

double Area(const PixelSource& pixels) {
  return static_cast<double>(pixels.Size().width) * pixels.Size().height;
}

void TellPixelSize(const SaveOptions& options, TIFF* tiff) {
  if (!options.pixelSize) return;
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_CENTIMETER);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 0.01 / options.pixelSize->width);
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, 0.01 / options.pixelSize->height);
}

// What a tile holds beyond the edge of the picture does not matter; it stays as it was.
bool WriteTiles(const PixelSource& pixels, const StopToken& stop, TiffStream& stream,
                Count& count) {
  const cv::Rect all(cv::Point(), pixels.Size());
  cv::Mat tile = cv::Mat::zeros(kOmeTile, kOmeTile, CV_8UC(pixels.Channels()));
  for (int y = 0; y < all.height; y += kOmeTile) {
    for (int x = 0; x < all.width; x += kOmeTile) {
      if (stop.Requested()) return false;
      const cv::Rect area = cv::Rect(x, y, kOmeTile, kOmeTile) & all;
      cv::Mat part = tile(cv::Rect(cv::Point(), area.size()));
      pixels.Read(area, part);
      stream.Check(TIFFWriteTile(stream.Get(), tile.data, static_cast<std::uint32_t>(x),
                                 static_cast<std::uint32_t>(y), 0, 0) >= 0);
      count.Add(area);
    }
  }
  return true;
}

}  // namespace

bool NeedsBigTiff(cv::Size size, int channels) {
  // The tiles at the edges are filled up. Each level has a quarter of the one above.
  const double filled = (size.width + kOmeTile - 1.0) * (size.height + kOmeTile - 1.0) * channels;
  constexpr double kGrowth = 1.05, kLevels = 4.0 / 3.0, kTables = 16e6;
  return filled * kLevels * kGrowth + kTables > 4294967295.0;
}

bool WriteOmeTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
                  const SaveProgress& progress, const StopToken& stop) {
  TiffStream stream(options, file, NeedsBigTiff(pixels.Size(), pixels.Channels()));
  PixelLevels levels(pixels, kOmeTile);
  Count count(progress, Area(pixels) * 4 / 3);
  for (int number = 0; number < levels.Count(); ++number) {
    const PixelSource& level = levels.Level(number, stop);
    stream.BeginPicture(level, options.compression);
    TIFFSetField(stream.Get(), TIFFTAG_TILEWIDTH, kOmeTile);
    TIFFSetField(stream.Get(), TIFFTAG_TILELENGTH, kOmeTile);
    if (number == 0) {
      const std::string xml = OmeXml(pixels.Size(), pixels.Channels(), options.pixelSize);
      TIFFSetField(stream.Get(), TIFFTAG_IMAGEDESCRIPTION, xml.c_str());
      TellPixelSize(options, stream.Get());
      // So many of the directories that follow are its SubIFDs; the library fills in where.
      const std::vector<toff_t> places(static_cast<std::size_t>(levels.Count() - 1), 0);
      if (!places.empty()) {
        TIFFSetField(stream.Get(), TIFFTAG_SUBIFD, static_cast<int>(places.size()), places.data());
      }
    } else {
      TIFFSetField(stream.Get(), TIFFTAG_SUBFILETYPE, FILETYPE_REDUCEDIMAGE);
    }
    if (!WriteTiles(level, stop, stream, count)) return false;
    stream.EndPicture();
  }
  stream.Close();
  if (progress) progress(1.0);
  return true;
}

bool WriteTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
               const SaveProgress& progress, const StopToken& stop) {
  TiffStream stream(options, file, NeedsBigTiff(pixels.Size(), pixels.Channels()));
  stream.BeginPicture(pixels, Compression::kLzw);
  TIFFSetField(stream.Get(), TIFFTAG_ROWSPERSTRIP, kRowsInStrip);
  TellPixelSize(options, stream.Get());
  Count count(progress, Area(pixels));
  cv::Mat rows(kRowsInStrip, pixels.Size().width, CV_8UC(pixels.Channels()));
  for (int y = 0; y < pixels.Size().height; y += kRowsInStrip) {
    if (stop.Requested()) return false;
    const cv::Rect area(0, y, rows.cols, std::min(kRowsInStrip, pixels.Size().height - y));
    cv::Mat strip = rows.rowRange(0, area.height);
    pixels.Read(area, strip);
    const auto bytes = static_cast<tmsize_t>(strip.total() * strip.elemSize());
    stream.Check(TIFFWriteEncodedStrip(stream.Get(), static_cast<std::uint32_t>(y / kRowsInStrip),
                                       strip.data, bytes) >= 0);
    count.Add(area);
  }
  stream.EndPicture();
  stream.Close();
  return true;
}

}  // namespace jqhost
