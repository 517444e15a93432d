#include "blend/kernels/fusion.h"
#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

void JQStitchingAlgorithm::WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight) {
  jqstitching::CheckPictures(oldBlock, newFrame);
  weight = jqstitching::OldContentWeight(oldBlock, newFrame, m_workspace.get().fusion);
}

void JQStitchingAlgorithm::TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused) {
  jqstitching::CheckPictures(oldBlock, newFrame);
  jqstitching::FuseImages(oldBlock, newFrame, false, m_workspace.get().fusion);
  fused = newFrame;
}
