#include <opencv2/imgproc.hpp>
#include <utility>

#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "picture/grey.h"
#include "registration/kernels/corners.h"

void JQStitchingAlgorithm::FindHarrisCornerCoordianteFun(cv::Mat image,
                                                         std::vector<cv::Point>& corners) {
  using namespace jqstitching;
  CheckPicture(image);
  Workspace& workspace = m_workspace.get();
  m_nDownScale = CornerScale(m_nDetectLevel);
  if (m_nDownScale == 2) {
    if (image.type() == CV_8UC1) {
      image = Halve(image, workspace.half);
    } else {
      const cv::Size half(image.cols / 2, image.rows / 2);
      cv::resize(image, image, half, 1.0, 0.0, cv::INTER_LINEAR);
    }
  }
  CornerList found = FindCorners(image, m_nDetectLevel, m_nCornerBudget, workspace.corners);
  if (found.positions.empty()) return;
  if (found.unordered) {
    corners = std::move(found.positions);
    return;
  }
  corners.reserve(corners.size() + found.positions.size());
  for (size_t k = 0; k < found.positions.size(); ++k) {
    corners.push_back(found.positions[k]);
    // Element k, not the one just appended: the same for the empty list that
    // callers pass.
    if (m_nDownScale != 1) corners[k] *= m_nDownScale;
  }
}
