#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"
#include "registration/kernels/matching.h"

void JQStitchingAlgorithm::CalacDistanceIndexFun(cv::Mat first, cv::Mat second,
                                                 std::vector<cv::Point>& pairs) {
  using namespace jqstitching;
  CheckPictures(first, second);
  if (first.rows == 0 || second.rows == 0) return;
  if (first.cols < second.cols || first.channels() != 1 || second.channels() != 1) {
    CV_Error(cv::Error::StsUnmatchedSizes,
             cv::format("descriptors need one channel and as many columns in the first list as in "
                        "the second, not %d x %d and %d x %d",
                        first.cols, first.channels(), second.cols, second.channels()));
  }
  std::vector<cv::Point> found;
  if (first.type() == CV_16U && second.type() == CV_16U && first.cols == second.cols) {
    found = MatchDescriptors(PairedDescriptors(first), PairedDescriptors(second));
  } else {
    first.convertTo(first, CV_32F);
    second.convertTo(second, CV_32F);
    if (!cv::checkRange(first) || !cv::checkRange(second)) {
      CV_Error(cv::Error::StsOutOfRange, "a descriptor holds a value that is not finite");
    }
    found = MatchInStatedOrder(first, second);
  }
  pairs.insert(pairs.end(), found.begin(), found.end());
}

void JQStitchingAlgorithm::RoughMatchPoint(std::vector<cv::Point> cornersFirst,
                                           std::vector<cv::Point> cornersSecond,
                                           std::vector<cv::Point> pairs,
                                           std::vector<cv::Point>& matchedFirst,
                                           std::vector<cv::Point>& matchedSecond) {
  // Checked before anything is appended. One list may be given for both outputs.
  for (const cv::Point& pair : pairs) {
    static_cast<void>(cornersFirst.at(static_cast<size_t>(pair.y)));
    static_cast<void>(cornersSecond.at(static_cast<size_t>(pair.x)));
  }
  matchedFirst.reserve(matchedFirst.size() + pairs.size());
  matchedSecond.reserve(matchedSecond.size() + pairs.size());
  for (const cv::Point& pair : pairs) {
    matchedFirst.push_back(cornersFirst[static_cast<size_t>(pair.y)]);
    matchedSecond.push_back(cornersSecond[static_cast<size_t>(pair.x)]);
  }
}
