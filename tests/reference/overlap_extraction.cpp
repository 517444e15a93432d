#include <cstdlib>

#include "reference/algorithm.h"

namespace reference {
namespace {

struct Piece {
  int rowStart;
  int rowEnd;
  int colStart;
  int colEnd;
};

cv::Mat Cut(const cv::Mat& image, const Piece& piece) {
  // Both ranges at once: a view without rows has no columns left to take a range of.
  const cv::Mat view(image, cv::Range(piece.rowStart, piece.rowEnd),
                     cv::Range(piece.colStart, piece.colEnd));
  cv::Mat copy;
  view.copyTo(copy);
  return copy;
}

void Extract(int px, int py, int dx, int dy, const cv::Mat& first, const cv::Mat& second,
             cv::Mat& firstPart, cv::Mat& secondPart) {
  const int rows = second.rows;
  const int cols = second.cols;
  Piece one;
  Piece two;
  if ((dx | dy) >= 0) {
    one = {py + dy, py + rows, px + dx, px + cols};
    two = {0, rows - dy, 0, cols - dx};
  } else if ((dx & dy) < 0) {
    one = {py, py + rows - std::abs(dy), px, px + cols - std::abs(dx)};
    two = {std::abs(dy), rows, std::abs(dx), cols};
  } else if (dx < 0) {
    one = {py + dy, py + rows, px, px + cols + dx};
    two = {0, rows - dy, -dx, cols};
  } else {
    one = {py, py + rows - std::abs(dy), px + dx, px + cols};
    two = {std::abs(dy), rows, 0, cols - dx};
  }
  const cv::Mat firstCopy = Cut(first, one);
  const cv::Mat secondCopy = Cut(second, two);
  firstPart = firstCopy;
  secondPart = secondCopy;
}

}  // namespace

void Algorithm::TakeOutOverLapImageFromMoasicImage(cv::Point origin, int dx, int dy, cv::Mat first,
                                                   cv::Mat second, cv::Mat& firstPart,
                                                   cv::Mat& secondPart) {
  Extract(origin.x, origin.y, dx, dy, first, second, firstPart, secondPart);
}

void Algorithm::TakeOutOverLapImage(cv::Point /*origin*/, int dx, int dy, cv::Mat first,
                                    cv::Mat second, cv::Mat& firstPart, cv::Mat& secondPart) {
  Extract(0, 0, dx, dy, first, second, firstPart, secondPart);
}

}  // namespace reference
