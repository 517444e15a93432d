#include "host/output/ome_xml.h"

#include <cstdio>

namespace jqhost {
namespace {

// Micrometres, as the schema has them where no unit is given.
std::string Micrometres(double metres) {
  char text[48];
  std::snprintf(text, sizeof text, "%.10g", metres * 1e6);
  return text;
}

std::string PhysicalSize(const std::optional<cv::Size2d>& pixelSize) {
  if (!pixelSize) return std::string();
  return " PhysicalSizeX=\"" + Micrometres(pixelSize->width) +
         "\" PhysicalSizeXUnit=\"\xc2\xb5m\" PhysicalSizeY=\"" + Micrometres(pixelSize->height) +
         "\" PhysicalSizeYUnit=\"\xc2\xb5m\"";
}

}  // namespace

std::string OmeXml(cv::Size size, int samples, const std::optional<cv::Size2d>& pixelSize) {
  const std::string count = std::to_string(samples);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<OME xmlns=\"http://www.openmicroscopy.org/Schemas/OME/2016-06\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
         "xsi:schemaLocation=\"http://www.openmicroscopy.org/Schemas/OME/2016-06 "
         "http://www.openmicroscopy.org/Schemas/OME/2016-06/ome.xsd\">\n"
         "<Image ID=\"Image:0\" Name=\"mosaic\">\n"
         "<Pixels ID=\"Pixels:0\" DimensionOrder=\"XYCZT\" Type=\"uint8\" BigEndian=\"false\" "
         "Interleaved=\"true\" SizeX=\"" +
         std::to_string(size.width) + "\" SizeY=\"" + std::to_string(size.height) + "\" SizeC=\"" +
         count + "\" SizeZ=\"1\" SizeT=\"1\"" + PhysicalSize(pixelSize) +
         ">\n<Channel ID=\"Channel:0:0\" SamplesPerPixel=\"" + count +
         "\"/>\n<TiffData IFD=\"0\" PlaneCount=\"1\"/>\n</Pixels>\n</Image>\n</OME>\n";
}

}  // namespace jqhost
