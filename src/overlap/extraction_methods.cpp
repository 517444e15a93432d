#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"
#include "overlap/kernels/overlap_extraction.h"

void JQStitchingAlgorithm::TakeOutOverLapImageFromMoasicImage(cv::Point origin, int dx, int dy,
                                                              cv::Mat first, cv::Mat second,
                                                              cv::Mat& firstPart,
                                                              cv::Mat& secondPart) {
  jqstitching::CheckPictures(first, second);
  const jqstitching::Overlap overlap = jqstitching::CutOverlap(origin, dx, dy, first, second);
  cv::Mat firstCopy, secondCopy;
  overlap.first.copyTo(firstCopy);
  overlap.second.copyTo(secondCopy);
  firstPart = firstCopy;
  secondPart = secondCopy;
}

void JQStitchingAlgorithm::TakeOutOverLapImage(cv::Point, int dx, int dy, cv::Mat first,
                                               cv::Mat second, cv::Mat& firstPart,
                                               cv::Mat& secondPart) {
  TakeOutOverLapImageFromMoasicImage(cv::Point(0, 0), dx, dy, first, second, firstPart, secondPart);
}
