#include "host/record/html_map.h"

#include <algorithm>
#include <opencv2/imgcodecs.hpp>

#include "host/output/picture.h"
#include "host/record/assembly_map.h"
#include "host/record/html_text.h"
#include "host/record/run_track.h"
#include "host/record/seams.h"

namespace jqhost {
namespace {

constexpr int kMapSide = 2000;

// What lies over the picture, one upon the other, and the boxes that switch it.
struct Layers {
  std::string switches, content;

  void Add(const std::string& name, const std::string& label, bool on, const std::string& shapes,
           const std::string& attributes = std::string()) {
    switches += "<label><input type=\"checkbox\" data-layer=\"" + name + "\"" +
                (on ? " checked" : "") + "> " + label + "</label>\n";
    content += "<g id=\"" + name + "\"" + attributes + ">\n" + shapes + "</g>\n";
  }
};

cv::Point Centre(const cv::Rect& area) {
  return (area.tl() + area.br()) / 2;
}

std::string Circle(cv::Point centre, int radius, const std::string& title) {
  return "<circle cx=\"" + std::to_string(centre.x) + "\" cy=\"" + std::to_string(centre.y) +
         "\" r=\"" + std::to_string(radius) + "\"><title>" + Escape(title) + "</title></circle>\n";
}

// Where the track was lost: the place of the last frame that was held.
std::string Losses(const RunRecord& record, int radius) {
  if (!record.live) return std::string();
  const auto places = CameraPlaces(record.frames);
  std::string marks;
  for (const Loss& loss : FindLosses(record.frames)) {
    if (!places[loss.held]) continue;
    const cv::Rect area(record.firstCorner + *places[loss.held], record.workingSize);
    marks += Circle(
        Centre(area), 3 * radius,
        "track lost at frame " + std::to_string(record.frames[loss.first].number) +
            (loss.regained ? ", found again after frame " : ", not found again; last frame ") +
            std::to_string(record.frames[loss.last].number));
  }
  return marks;
}

void AddPairs(const RunRecord& record, Layers& layers) {
  const PairLines lines = DrawPairLines(record);
  if (!lines.doubted.empty())
    layers.Add("doubted-pairs", "pairs that do not count", false, lines.doubted);
  layers.Add("used-pairs", "pairs used", true, lines.used);
  if (!lines.thrownOut.empty())
    layers.Add("thrown-pairs", "pairs thrown out", true, lines.thrownOut);
}

}  // namespace

std::string HtmlMap(const RunRecord& record, const std::vector<std::string>& names,
                    const cv::Mat& picture) {
  const std::string width = std::to_string(record.pictureSize.width);
  const std::string height = std::to_string(record.pictureSize.height);
  const int longest = std::max(record.pictureSize.width, record.pictureSize.height);
  const int radius = std::max(2, longest / 300);
  const int letters = std::max(6, std::min(longest / 40, record.workingSize.height / 5));
  std::string rectangles, numbers, path, dots;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const FrameResult& frame = record.frames[i];
    if (!frame.Placed()) continue;
    const cv::Rect area(CornerInPicture(record, frame), record.workingSize);
    const cv::Point centre = Centre(area);
    rectangles += std::string(frame.Doubtful() ? "<rect class=\"doubt\"" : "<rect") + " x=\"" +
                  std::to_string(area.x) + "\" y=\"" + std::to_string(area.y) + "\" width=\"" +
                  std::to_string(area.width) + "\" height=\"" + std::to_string(area.height) +
                  "\"><title>" + Escape(names[i]) + "</title></rect>\n";
    numbers += "<text x=\"" + std::to_string(centre.x) + "\" y=\"" + std::to_string(centre.y) +
               "\">" + std::to_string(frame.number) + "</text>\n";
    path += HtmlPair(centre) + " ";
    dots += Circle(centre, dots.empty() ? 2 * radius : radius, names[i]);
  }
  std::vector<unsigned char> bytes;
  cv::imencode(".jpg", Shrink(picture, kMapSide, record.background), bytes,
               {cv::IMWRITE_JPEG_QUALITY, 85});
  Layers layers;
  layers.Add("frames", "frames", true, rectangles);
  if (record.assembly) {
    AddPairs(record, layers);
  } else {
    layers.Add("seams", "seams", false, "<path d=\"" + SeamPath(record) + "\"/>\n");
    layers.Add("order", "order", true, "<polyline points=\"" + path + "\"/>\n" + dots);
    const std::string losses = Losses(record, radius);
    if (!losses.empty()) layers.Add("losses", "where the track was lost", true, losses);
  }
  layers.Add("numbers", "numbers", true, numbers, " font-size=\"" + std::to_string(letters) + "\"");
  return "<p class=\"layers\">" + layers.switches +
         "<span class=\"hint\">wheel zooms, drag moves, double click shows all</span></p>\n" +
         "<svg id=\"map\" viewBox=\"0 0 " + width + " " + height +
         "\" role=\"img\" aria-label=\"the picture and where its frames lie\">\n<image width=\"" +
         width + "\" height=\"" + height + "\" preserveAspectRatio=\"none\" href=\"" +
         JpegSource(bytes) + "\"/>\n" + layers.content + "</svg>\n";
}

}  // namespace jqhost
