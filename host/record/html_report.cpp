#include "host/record/html_report.h"

#include <QByteArray>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <vector>

#include "host/output/picture.h"

namespace jqhost {
namespace {

constexpr int kLongestSide = 1600;

constexpr char kStyle[] = R"(
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem auto; max-width: 70rem; padding: 0 1rem;
       color: #1c1c1c; background: #fff; }
h1 { font-size: 1.5rem; margin-bottom: .2rem; } h2 { font-size: 1.1rem; margin-top: 2rem; }
svg { width: 100%; height: auto; max-height: 80vh; background: #222; }
rect { fill: none; stroke: #0bf; stroke-opacity: .55; vector-effect: non-scaling-stroke; }
rect:hover { stroke: #fd0; stroke-opacity: 1; fill: #fd02; }
polyline { fill: none; stroke: #f60; stroke-width: 2; vector-effect: non-scaling-stroke; }
table { border-collapse: collapse; width: 100%; } th, td { text-align: left; padding: .25rem .6rem;
        border-bottom: 1px solid #ddd; vertical-align: top; }
td.n { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
tr.out td { background: #fff1e6; } tr.doubt td { background: #fffbd6; }
rect.doubt { stroke: #f33; stroke-opacity: 1; stroke-dasharray: 6 4; } .advice { color: #555; }
)";

std::string Escape(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Number(double value) {
  char text[48];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

std::string Pair(cv::Point point) {
  return std::to_string(point.x) + "," + std::to_string(point.y);
}

std::string Base64Jpeg(const cv::Mat& picture) {
  std::vector<unsigned char> bytes;
  cv::imencode(".jpg", Shrink(picture, kLongestSide), bytes, {cv::IMWRITE_JPEG_QUALITY, 85});
  return QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                 static_cast<int>(bytes.size()))
      .toBase64()
      .toStdString();
}

std::string Map(const RunRecord& record, const std::vector<std::string>& names,
                const cv::Mat& picture) {
  const std::string width = std::to_string(record.pictureSize.width);
  const std::string height = std::to_string(record.pictureSize.height);
  std::string svg = "<svg viewBox=\"0 0 " + width + " " + height +
                    "\" role=\"img\" aria-label=\"the picture and the path of the frames\">\n"
                    "<image width=\"" +
                    width + "\" height=\"" + height +
                    "\" preserveAspectRatio=\"none\" href=\"data:image/jpeg;base64," +
                    Base64Jpeg(picture) + "\"/>\n";
  std::string path, dots;
  const int radius =
      std::max(2, std::max(record.pictureSize.width, record.pictureSize.height) / 250);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const FrameResult& frame = record.frames[i];
    if (!frame.Placed()) continue;
    const cv::Rect area(CornerInPicture(record, frame), record.workingSize);
    const cv::Point centre = (area.tl() + area.br()) / 2;
    svg += std::string(frame.Doubtful() ? "<rect class=\"doubt\"" : "<rect") + " x=\"" +
           std::to_string(area.x) + "\" y=\"" + std::to_string(area.y) + "\" width=\"" +
           std::to_string(area.width) + "\" height=\"" + std::to_string(area.height) +
           "\"><title>" + Escape(names[i]) + "</title></rect>\n";
    path += Pair(centre) + " ";
    dots += "<circle cx=\"" + std::to_string(centre.x) + "\" cy=\"" + std::to_string(centre.y) +
            "\" r=\"" + std::to_string(dots.empty() ? 2 * radius : radius) + "\" fill=\"" +
            (dots.empty() ? "#0c4" : "#f60") + "\"><title>" + Escape(names[i]) +
            "</title></circle>\n";
  }
  return svg + "<polyline points=\"" + path + "\"/>\n" + dots + "</svg>\n";
}

std::string Row(const RunRecord& record, std::size_t i, const std::string& name,
                const PositionError* error, const Words& words) {
  const FrameResult& frame = record.frames[i];
  const bool placed = frame.Placed();
  std::string row = !placed            ? "<tr class=\"out\">"
                    : frame.Doubtful() ? "<tr class=\"doubt\">"
                                       : "<tr>";
  row += "<td class=\"n\">" + std::to_string(frame.number) + "</td><td>" + Escape(name) +
         "</td><td>" + (placed ? "placed" : "left out: " + Escape(words.Reason(record, frame)));
  const std::string note = words.Note(frame), advice = words.Advice(record, frame);
  if (!note.empty()) row += " (" + Escape(note) + ")";
  if (!advice.empty()) row += "<br><span class=\"advice\">" + Escape(advice) + "</span>";
  row += "</td><td class=\"n\">" + (placed ? Pair(CornerInPicture(record, frame)) : "") +
         "</td><td class=\"n\">" + (frame.registered ? std::to_string(frame.matches) : "") +
         "</td><td class=\"n\">" + (frame.doubt ? Number(frame.doubt->confidence) : "") + "</td>";
  if (record.truth) {
    row += "<td class=\"n\">" +
           (error != nullptr && error->neighbour >= 0 ? Number(error->neighbour) : "") +
           "</td><td class=\"n\">" + (error != nullptr ? Number(error->absolute) : "") + "</td>";
  }
  return row + "</tr>\n";
}

std::string Table(const RunRecord& record, const std::vector<std::string>& names,
                  const Words& words) {
  std::string table =
      "<table><thead><tr><th>No.</th><th>Frame</th><th>Verdict</th><th>Corner</th><th>Matches</"
      "th><th>Confidence</th>";
  if (record.truth) table += "<th>Error to neighbour</th><th>Error to first</th>";
  table += "</tr></thead><tbody>\n";
  std::vector<const PositionError*> errors(names.size(), nullptr);
  if (record.truth) {
    for (const PositionError& error : record.truth->errors) errors[error.frame] = &error;
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    table += Row(record, i, names[i], errors[i], words);
  }
  return table + "</tbody></table>\n";
}

}  // namespace

std::string HtmlReport(const RunRecord& record, const cv::Mat& picture, const Words& words) {
  const std::vector<std::string> names = ShortNames(record.frames);
  std::string page = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>";
  page += Escape(words.Outcome(record)) + "</title>\n<style>" + kStyle + "</style></head><body>\n";
  page += "<h1>" + Escape(words.Outcome(record)) + "</h1>\n<p>" + Escape(record.program) + " " +
          record.command + ", " + Number(record.seconds) + " s, frames of " +
          std::to_string(record.frameSize.width) + " x " + std::to_string(record.frameSize.height) +
          " pixels, detect level " + std::to_string(record.settings.detectLevel) + ".</p>\n";
  for (const std::string& note : record.notes) page += "<p>" + Escape(note) + "</p>\n";
  if (record.truth && !record.truth->errors.empty()) {
    page += "<p>Position error in pixels: to the neighbour placed before, median " +
            Number(record.truth->neighbourMedian) + ", maximum " +
            Number(record.truth->neighbourMaximum) + "; to the first frame, median " +
            Number(record.truth->absoluteMedian) + ", maximum " +
            Number(record.truth->absoluteMaximum) + ".</p>\n";
  }
  if (!picture.empty()) {
    page += "<h2>" + Escape(std::filesystem::path(record.picture).filename().string()) + ", " +
            std::to_string(record.pictureSize.width) + " x " +
            std::to_string(record.pictureSize.height) + " pixels</h2>\n" +
            Map(record, names, picture) +
            "<p>Frames in blue, their order in orange, the first one green.</p>\n";
  }
  return page + "<h2>Frames</h2>\n" + Table(record, names, words) + "</body></html>\n";
}

}  // namespace jqhost
