#include "host/record/html_map.h"

#include <algorithm>
#include <opencv2/imgcodecs.hpp>

#include "host/output/picture.h"
#include "host/record/html_text.h"
#include "host/record/run_track.h"
#include "host/record/seams.h"

namespace jqhost {
namespace {

constexpr int kMapSide = 2000;

std::string Layer(const char* name, const std::string& content) {
  return std::string("<g id=\"") + name + "\">\n" + content + "</g>\n";
}

std::string Switch(const char* name, const char* label, bool on) {
  return std::string("<label><input type=\"checkbox\" data-layer=\"") + name + "\"" +
         (on ? " checked" : "") + "> " + label + "</label>\n";
}

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
  const std::string losses = Losses(record, radius);
  std::string html = "<p class=\"layers\">" + Switch("frames", "frames", true) +
                     Switch("numbers", "numbers", true) + Switch("order", "order", true) +
                     Switch("seams", "seams", false);
  if (!losses.empty()) html += Switch("losses", "where the track was lost", true);
  html += "<span class=\"hint\">wheel zooms, drag moves, double click shows all</span></p>\n";
  html +=
      "<svg id=\"map\" viewBox=\"0 0 " + width + " " + height +
      "\" role=\"img\" aria-label=\"the picture and the path of the frames\">\n<image width=\"" +
      width + "\" height=\"" + height + "\" preserveAspectRatio=\"none\" href=\"" +
      JpegSource(bytes) + "\"/>\n";
  html += Layer("seams", "<path d=\"" + SeamPath(record) + "\"/>\n") + Layer("frames", rectangles) +
          Layer("order", "<polyline points=\"" + path + "\"/>\n" + dots) +
          "<g id=\"numbers\" font-size=\"" + std::to_string(letters) + "\">\n" + numbers +
          "</g>\n" + Layer("losses", losses) + "</svg>\n";
  return html;
}

}  // namespace jqhost
