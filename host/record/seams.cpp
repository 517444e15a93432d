#include "host/record/seams.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "host/record/html_text.h"

namespace jqhost {
namespace {

constexpr int kMostCells = 1000;
constexpr int kNobody = -1;

// Gives the new frame's number to the cells where it weighs more than what lies there.
void PaintFrame(cv::Mat& owner, const cv::Rect& area, int number) {
  cv::Mat owners = owner(area);
  const cv::Mat covered = owners != kNobody;
  // The border of the frame counts as empty, hence the ring of zeros.
  cv::Mat frame = cv::Mat::zeros(area.height + 2, area.width + 2, CV_8UC1), fromBorder, fromEmpty;
  frame(cv::Rect(1, 1, area.width, area.height)).setTo(255);
  cv::distanceTransform(frame, fromBorder, cv::DIST_L2, 3);
  cv::distanceTransform(covered, fromEmpty, cv::DIST_L2, 3);
  for (int r = 0; r < area.height; ++r) {
    int* row = owners.ptr<int>(r);
    const float* older = fromEmpty.ptr<float>(r);
    const float* newer = fromBorder.ptr<float>(r + 1) + 1;
    for (int c = 0; c < area.width; ++c) {
      if (row[c] == kNobody || newer[c] > older[c]) row[c] = number;
    }
  }
}

bool IsSeam(int a, int b) {
  return a != b && a != kNobody && b != kNobody;
}

// Lines between cells of different owners, neighbours along a line joined.
std::string Lines(const cv::Mat& owner, bool down, double scale) {
  const cv::Mat grid = down ? owner.t() : owner;
  std::string path;
  for (int r = 0; r + 1 < grid.rows; ++r) {
    const int* above = grid.ptr<int>(r);
    const int* below = grid.ptr<int>(r + 1);
    for (int c = 0; c < grid.cols;) {
      if (!IsSeam(above[c], below[c])) {
        ++c;
        continue;
      }
      const int begin = c;
      while (c < grid.cols && IsSeam(above[c], below[c])) ++c;
      const std::string across = HtmlNumber((r + 1) / scale, 0);
      const std::string from = HtmlNumber(begin / scale, 0), to = HtmlNumber(c / scale, 0);
      path += 'M';
      path += down ? across : from;
      path += ' ';
      path += down ? from : across;
      path += down ? 'V' : 'H';
      path += to;
    }
  }
  return path;
}

}  // namespace

std::string SeamPath(const RunRecord& record) {
  const int longest = std::max(record.pictureSize.width, record.pictureSize.height);
  if (longest <= 0) return std::string();
  const double scale = std::min(1.0, static_cast<double>(kMostCells) / longest);
  const auto cell = [scale](int value) { return cvRound(value * scale); };
  cv::Mat owner(std::max(1, cell(record.pictureSize.height)),
                std::max(1, cell(record.pictureSize.width)), CV_32SC1, cv::Scalar(kNobody));
  int number = 0;
  for (const FrameResult& frame : record.frames) {
    if (!frame.Placed()) continue;
    const cv::Rect area(CornerInPicture(record, frame), record.workingSize);
    const cv::Rect cells = cv::Rect(cv::Point(cell(area.x), cell(area.y)),
                                    cv::Point(cell(area.br().x), cell(area.br().y))) &
                           cv::Rect(cv::Point(), owner.size());
    if (!cells.empty()) PaintFrame(owner, cells, number);
    ++number;
  }
  return Lines(owner, false, scale) + Lines(owner, true, scale);
}

}  // namespace jqhost
