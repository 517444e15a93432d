#include "picture/library_rounding.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "picture/filter_rounding.h"
#include "picture/grey.h"
#include "picture/remembered_probe.h"

namespace jqstitching {
namespace {

std::atomic<bool> g_forced{false};

cv::Mat RandomBytes(int rows, int cols, int type) {
  std::uint32_t state = 3;
  cv::Mat picture(rows, cols, type);
  for (int r = 0; r < rows; ++r) {
    unsigned char* row = picture.ptr(r);
    for (int k = 0; k < cols * picture.channels(); ++k) {
      state = state * 1664525u + 1013904223u;
      row[k] = static_cast<unsigned char>(state >> 24);
    }
  }
  return picture;
}

bool SameRow(const cv::Mat& picture, int row, const cv::Mat& expected) {
  return std::memcmp(picture.ptr(row), expected.ptr(), static_cast<size_t>(expected.cols)) == 0;
}

bool LibraryGrey() {
  return GivesOwnGrey(
      [](const cv::Mat& from, cv::Mat& to) { cv::cvtColor(from, to, cv::COLOR_RGB2GRAY); });
}

bool LibraryHalves() {
  return GivesOwnHalves([](const cv::Mat& from, cv::Mat& to) {
    cv::resize(from, to, cv::Size(from.cols / 2, from.rows / 2), 0, 0, cv::INTER_LINEAR);
  });
}

}  // namespace

bool GivesOwnGrey(const Conversion& convert) {
  // Wider than any vector and not a multiple of one; random colours, then all dark
  // ones, where grey decides between content and empty mosaic.
  constexpr int kRows = 40, kCols = 259, kDark = 10;
  cv::Mat colour = RandomBytes(kRows, kCols, CV_8UC3);
  for (int k = 0; k < kDark * kDark * kDark; ++k) {
    colour.at<cv::Vec3b>(k / kCols, k % kCols) = cv::Vec3b(
        static_cast<unsigned char>(k % kDark), static_cast<unsigned char>(k / kDark % kDark),
        static_cast<unsigned char>(k / (kDark * kDark)));
  }
  cv::Mat grey, own(1, kCols, CV_8U);
  convert(colour, grey);
  for (int r = 0; r < kRows; ++r) {
    GreyRow(colour.ptr(r), kCols, own.ptr());
    if (!SameRow(grey, r, own)) return false;
  }
  return true;
}

bool GivesOwnHalves(const Conversion& convert) {
  for (const int cols : {10, 262}) {
    const cv::Mat grey = RandomBytes(20, cols, CV_8U);
    cv::Mat half, own(1, cols / 2, CV_8U);
    convert(grey, half);
    for (int r = 0; r < half.rows; ++r) {
      HalveRows(grey.ptr(2 * r), grey.ptr(2 * r + 1), own.cols, own.ptr());
      if (!SameRow(half, r, own)) return false;
    }
  }
  return true;
}

bool OwnGreyFollows() {
  static RememberedProbe<bool> probe(LibraryGrey);
  return !g_forced && probe.answer().value_or(false);
}

bool OwnHalvingFollows() {
  static RememberedProbe<bool> probe(LibraryHalves);
  return !g_forced && probe.answer().value_or(false);
}

void PrepareRounding() {
  OwnGreyFollows();
  OwnHalvingFollows();
  FollowableRounding();
}

void ForceLibraryCalls(bool forced) {
  g_forced = forced;
}

bool LibraryCallsForced() {
  return g_forced;
}

}  // namespace jqstitching
