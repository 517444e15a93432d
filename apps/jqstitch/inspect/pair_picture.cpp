#include "inspect/pair_picture.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <set>
#include <utility>

#include "inspect/canvas_text.h"

namespace jqstitch {
namespace {

constexpr int kMargin = 12;
// Colours that people with any kind of colour vision tell apart (blue-green-red).
const cv::Scalar kPaper(255, 255, 255);
const cv::Scalar kInk(40, 40, 40);
const cv::Scalar kEmpty(225, 225, 225);
const cv::Scalar kInlier(115, 158, 0);
const cv::Scalar kOutlier(0, 94, 213);
const cv::Scalar kLoneCorner(66, 228, 240);
const cv::Vec3b kFromFirst(178, 114, 0);
const cv::Vec3b kFromSecond(0, 159, 230);

// --- panes ----------------------------------------------------------------------

double ScaleFor(cv::Size content, int paneWidth) {
  const double across = static_cast<double>(paneWidth) / content.width;
  const double down = 1.5 * paneWidth / content.height;
  return std::min({across, down, 4.0});
}

cv::Mat Scaled(const cv::Mat& image, double scale) {
  cv::Mat result;
  const cv::Size size(std::max(cvRound(image.cols * scale), 1),
                      std::max(cvRound(image.rows * scale), 1));
  cv::resize(image, result, size, 0, 0, scale < 1 ? cv::INTER_AREA : cv::INTER_NEAREST);
  return result;
}

cv::Point Shown(cv::Point point, double scale, cv::Point corner) {
  return {corner.x + cvRound((point.x + 0.5) * scale), corner.y + cvRound((point.y + 0.5) * scale)};
}

// Appends a strip of paper below the picture and returns its top.
int AddStrip(cv::Mat& picture, int height) {
  const int top = picture.rows;
  cv::copyMakeBorder(picture, picture, 0, height, 0, 0, cv::BORDER_CONSTANT, kPaper);
  return top;
}

void AddText(cv::Mat& picture, const std::string& text, bool bold = false) {
  for (const std::string& line : WrapText(text, picture.cols - 2 * kMargin, bold)) {
    const int top = AddStrip(picture, kLineHeight);
    WriteText(picture, kMargin, top, line, kInk, bold);
  }
}

void AddCaptions(cv::Mat& picture, const std::string& left, const std::string& right) {
  const int half = (picture.cols - 3 * kMargin) / 2;
  const std::vector<std::string> columns[2] = {WrapText(left, half), WrapText(right, half)};
  const std::size_t lines = std::max(columns[0].size(), columns[1].size());
  const int top = AddStrip(picture, static_cast<int>(lines) * kLineHeight);
  for (int side = 0; side < 2; ++side) {
    for (std::size_t i = 0; i < columns[side].size(); ++i) {
      WriteText(picture, kMargin + side * (half + kMargin), top + static_cast<int>(i) * kLineHeight,
                columns[side][i], kInk);
    }
  }
}

// --- marks ----------------------------------------------------------------------

void MarkInlier(cv::Mat& picture, cv::Point at) {
  cv::circle(picture, at, 3, kInlier, 1, cv::LINE_AA);
}

void MarkOutlier(cv::Mat& picture, cv::Point at) {
  cv::drawMarker(picture, at, kOutlier, cv::MARKER_TILTED_CROSS, 7, 1, cv::LINE_AA);
}

void MarkLoneCorner(cv::Mat& picture, cv::Point at) {
  cv::circle(picture, at, 2, kInk, cv::FILLED, cv::LINE_AA);
  cv::circle(picture, at, 1, kLoneCorner, cv::FILLED, cv::LINE_AA);
}

void MarkLoneCorners(cv::Mat& picture, const std::vector<cv::Point>& corners,
                     const std::vector<cv::Point>& matched, double scale, cv::Point corner) {
  const auto before = [](const cv::Point& a, const cv::Point& b) {
    return std::make_pair(a.y, a.x) < std::make_pair(b.y, b.x);
  };
  const std::set<cv::Point, decltype(before)> taken(matched.begin(), matched.end(), before);
  for (const cv::Point& point : corners) {
    if (taken.count(point) == 0) MarkLoneCorner(picture, Shown(point, scale, corner));
  }
}

// Draws the matches of one kind. Of `total` matches only `lines` get a line, spread
// evenly over them; all get their end marks.
void DrawMatches(cv::Mat& picture, const PairAnalysis& pair, bool inliers, int total, int lines,
                 double scale, const cv::Point (&corners)[2]) {
  int seen = 0;
  for (std::size_t k = 0; k < pair.inlier.size(); ++k) {
    if (pair.inlier[k] != inliers) continue;
    const cv::Point from = Shown(pair.matchedFirst[k], scale, corners[0]);
    const cv::Point to = Shown(pair.matchedSecond[k], scale, corners[1]);
    const long drawnBefore = static_cast<long>(seen) * lines / std::max(total, lines);
    const long drawnAfter = static_cast<long>(seen + 1) * lines / std::max(total, lines);
    if (drawnAfter > drawnBefore) {
      if (inliers) {
        cv::line(picture, from, to, kInlier, 1, cv::LINE_AA);
      } else {
        DrawDashedLine(picture, from, to, kOutlier);
      }
    }
    for (const cv::Point& end : {from, to}) {
      inliers ? MarkInlier(picture, end) : MarkOutlier(picture, end);
    }
    ++seen;
  }
}

// --- sections -------------------------------------------------------------------

std::string SizeText(const cv::Mat& image) {
  return std::to_string(image.cols) + "x" + std::to_string(image.rows);
}

void AddFrames(cv::Mat& picture, const PairAnalysis& pair, const PictureSettings& settings) {
  AddCaptions(picture,
              "A: " + settings.nameFirst + ", " + SizeText(pair.first) + ", " +
                  std::to_string(pair.cornersFirst.size()) + " corners",
              "B: " + settings.nameSecond + ", " + SizeText(pair.second) + ", " +
                  std::to_string(pair.cornersSecond.size()) + " corners");
  const int paneWidth = (picture.cols - 3 * kMargin) / 2;
  const double scale = ScaleFor(pair.first.size(), paneWidth);
  const cv::Mat panes[2] = {Scaled(pair.first, scale), Scaled(pair.second, scale)};
  const int top = AddStrip(picture, panes[0].rows + kMargin);
  const cv::Point corners[2] = {{kMargin, top}, {2 * kMargin + paneWidth, top}};
  for (int side = 0; side < 2; ++side) {
    panes[side].copyTo(picture(cv::Rect(corners[side], panes[side].size())));
  }
  MarkLoneCorners(picture, pair.cornersFirst, pair.matchedFirst, scale, corners[0]);
  MarkLoneCorners(picture, pair.cornersSecond, pair.matchedSecond, scale, corners[1]);
  const int outliers = static_cast<int>(pair.inlier.size()) - pair.support;
  DrawMatches(picture, pair, false, outliers, settings.lines, scale, corners);
  DrawMatches(picture, pair, true, pair.support, settings.lines, scale, corners);
}

void AddLegend(cv::Mat& picture, const PairAnalysis& pair, int lines) {
  const int outliers = static_cast<int>(pair.inlier.size()) - pair.support;
  const auto count = [lines](int total) {
    return std::to_string(total) +
           (total > lines ? ", lines of " + std::to_string(lines) + " drawn)" : ")");
  };
  const std::string texts[3] = {"inlier, agrees with the offset (" + count(pair.support),
                                "outlier (" + count(outliers), "corner without a match"};
  for (int i = 0; i < 3; ++i) {
    const int top = AddStrip(picture, kLineHeight);
    const cv::Point from(kMargin + 4, top + kLineHeight / 2);
    const cv::Point to(kMargin + 50, from.y);
    if (i == 0) {
      cv::line(picture, from, to, kInlier, 1, cv::LINE_AA);
      MarkInlier(picture, from);
      MarkInlier(picture, to);
    } else if (i == 1) {
      DrawDashedLine(picture, from, to, kOutlier);
      MarkOutlier(picture, from);
      MarkOutlier(picture, to);
    } else {
      MarkLoneCorner(picture, (from + to) / 2);
    }
    WriteText(picture, kMargin + 60, top, texts[i], kInk);
  }
}

// The weight of A, 255 where only A is, as a mixture of two colours.
cv::Mat PaintWeights(const PairAnalysis& pair) {
  cv::Mat painted(pair.fused.size(), CV_8UC3, kEmpty);
  painted(cv::Rect(pair.placeFirst, pair.first.size())).setTo(cv::Scalar(kFromFirst));
  cv::Mat block = painted(cv::Rect(pair.placeSecond, pair.second.size()));
  for (int r = 0; r < block.rows; ++r) {
    const unsigned char* weight = pair.weight.ptr<unsigned char>(r);
    cv::Vec3b* row = block.ptr<cv::Vec3b>(r);
    for (int c = 0; c < block.cols; ++c) {
      for (int k = 0; k < 3; ++k) {
        row[c][k] = static_cast<unsigned char>(
            (kFromFirst[k] * weight[c] + kFromSecond[k] * (255 - weight[c]) + 127) / 255);
      }
    }
  }
  return painted;
}

cv::Mat PaintFused(const PairAnalysis& pair) {
  cv::Mat painted(pair.fused.size(), CV_8UC3, kEmpty);
  for (const cv::Point& place : {pair.placeFirst, pair.placeSecond}) {
    const cv::Rect area(place, pair.first.size());
    pair.fused(area).copyTo(painted(area));
  }
  return painted;
}

void AddFusion(cv::Mat& picture, const PairAnalysis& pair) {
  AddStrip(picture, kMargin);
  if (pair.fused.empty()) {
    AddText(picture, pair.support == 0
                         ? "No fused result: without a match there is no offset."
                         : "No fused result: at this offset the frames do not overlap.");
    return;
  }
  AddCaptions(picture, "Fused result, " + SizeText(pair.fused) + " (A blue, B orange outline)",
              "Weight map: blue = pixels of A, orange = pixels of B");
  const int paneWidth = (picture.cols - 3 * kMargin) / 2;
  const double scale = ScaleFor(pair.fused.size(), paneWidth);
  const cv::Mat panes[2] = {Scaled(PaintFused(pair), scale), Scaled(PaintWeights(pair), scale)};
  const int top = AddStrip(picture, panes[0].rows + kMargin);
  for (int side = 0; side < 2; ++side) {
    const cv::Point corner(kMargin + side * (kMargin + paneWidth), top);
    panes[side].copyTo(picture(cv::Rect(corner, panes[side].size())));
    const auto outline = [&](cv::Point place, const cv::Vec3b& colour) {
      const cv::Rect area(
          corner + cv::Point(cvRound(place.x * scale), cvRound(place.y * scale)),
          cv::Size(cvFloor(pair.first.cols * scale), cvFloor(pair.first.rows * scale)));
      cv::rectangle(picture, area, cv::Scalar(colour), 1);
    };
    outline(pair.placeFirst, kFromFirst);
    outline(pair.placeSecond, kFromSecond);
  }
}

}  // namespace

cv::Mat DrawPair(const PairAnalysis& pair, const PictureSettings& settings) {
  cv::Mat picture(kMargin, settings.width, CV_8UC3, kPaper);
  AddText(picture, pair.verdict, true);
  if (pair.support > 0) {
    AddText(picture, "Offset of B in A: (" + std::to_string(pair.offset.x) + ", " +
                         std::to_string(pair.offset.y) + "), on which " +
                         std::to_string(pair.support) + " of " +
                         std::to_string(pair.inlier.size()) + " matches agree" +
                         (pair.support < 11 ? ", too few to trust it" : ""));
  }
  AddText(picture, pair.overlapWords);
  AddStrip(picture, kMargin);
  AddFrames(picture, pair, settings);
  AddLegend(picture, pair, settings.lines);
  AddFusion(picture, pair);
  return picture;
}

}  // namespace jqstitch
