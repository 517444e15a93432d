#include "host/record/html_report.h"

#include <filesystem>
#include <vector>

#include "host/output/scale_bar.h"
#include "host/record/assembly_tables.h"
#include "host/record/html_map.h"
#include "host/record/html_page.h"
#include "host/record/html_table.h"
#include "host/record/html_text.h"

namespace jqhost {
namespace {

std::string Errors(const TruthComparison& truth) {
  const auto number = [](double value) { return HtmlNumber(value, 2); };
  return "<p>Position error in pixels: to the neighbour placed before, median " +
         number(truth.neighbourMedian) + ", maximum " + number(truth.neighbourMaximum) +
         "; to the first frame, median " + number(truth.absoluteMedian) + ", maximum " +
         number(truth.absoluteMaximum) + ".</p>\n";
}

std::string Pixels(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height) + " pixels";
}

std::string Scale(const RunRecord& record) {
  if (!record.pixelSize) return std::string();
  const cv::Size2d pixel = *record.pixelSize;
  return "<p>A pixel is " + LengthText(pixel.width) + " x " + LengthText(pixel.height) +
         ", the picture " + LengthText(pixel.width * record.pictureSize.width) + " x " +
         LengthText(pixel.height * record.pictureSize.height) + ".</p>\n";
}

std::string Legend(const RunRecord& record) {
  return record.assembly
             ? "<p>Frames in blue; pairs that hold them together in green, thrown out because they "
               "break loops in red and dashed, other pairs that do not count dotted.</p>\n"
             : "<p>Frames in blue, their order in orange, the first one green, seams in magenta, "
               "where the track was lost in red.</p>\n";
}

}  // namespace

std::string HtmlReport(const RunRecord& record, const cv::Mat& picture, const Words& words) {
  const std::vector<std::string> names = ShortNames(record.frames);
  const std::string outcome = Escape(words.Outcome(record));
  std::string page = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>";
  page += outcome + "</title>\n<style>" + kHtmlStyle + "</style></head><body>\n<h1>" + outcome +
          "</h1>\n<p>" + Escape(record.program) + " " + record.command + ", " +
          HtmlNumber(record.seconds, 2) + " s, frames of " + Pixels(record.frameSize) +
          ", detect level " + std::to_string(record.settings.detectLevel) + ".</p>\n";
  for (const std::string& note : record.notes) page += "<p>" + Escape(note) + "</p>\n";
  if (record.truth && !record.truth->errors.empty()) page += Errors(*record.truth);
  if (record.assembly) page += HtmlIslands(record);
  if (!picture.empty()) {
    page += "<h2>" + Escape(std::filesystem::path(record.picture).filename().string()) + ", " +
            Pixels(record.pictureSize) + "</h2>\n" + Scale(record) +
            HtmlMap(record, names, picture) + Legend(record);
  }
  page += record.assembly ? "<h2>Frames</h2>\n" + HtmlAssembledFrames(record, names, words) +
                                "<h2>Pairs</h2>\n" + HtmlPairs(record)
                          : "<h2>Frames</h2>\n" + HtmlTable(record, names, words);
  return page + "<script>" + kHtmlScript + "</script>\n</body></html>\n";
}

}  // namespace jqhost
