#include "blend/kernels/fusion.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

void JQStitchingAlgorithm::WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight) {
  weight = jqstitching::OldContentWeight(oldBlock, newFrame, m_workspace.get().fusion);
}

void JQStitchingAlgorithm::TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused) {
  jqstitching::FuseImages(oldBlock, newFrame, false, m_workspace.get().fusion);
  fused = newFrame;
}
