#ifndef JQ_TESTS_FUZZ_LIMITED_MATRICES_H
#define JQ_TESTS_FUZZ_LIMITED_MATRICES_H

#include <opencv2/core.hpp>

/// Refuses the pixels of very large matrices, as a system short of memory does, so
/// that an input that asks for gigabytes costs no time. For as long as it lives.
class LimitedMatrices : public cv::MatAllocator {
 public:
  explicit LimitedMatrices(std::size_t mostBytes) : m_most(mostBytes) {
    cv::Mat::setDefaultAllocator(this);
  }
  ~LimitedMatrices() override { cv::Mat::setDefaultAllocator(cv::Mat::getStdAllocator()); }

  /// Whether a matrix has been refused since the last call.
  bool takeRefused() {
    const bool refused = m_refused;
    m_refused = false;
    return refused;
  }

  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    double bytes = CV_ELEM_SIZE(type);
    for (int k = 0; k < dims; ++k) bytes *= sizes[k];
    if (data == nullptr && bytes > static_cast<double>(m_most)) {
      m_refused = true;
      throw cv::Exception(cv::Error::StsNoMem, "no memory", "allocate", __FILE__, __LINE__);
    }
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData* data, cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    return cv::Mat::getStdAllocator()->allocate(data, flags, usage);
  }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }

 private:
  std::size_t m_most;
  mutable bool m_refused = false;
};

#endif  // JQ_TESTS_FUZZ_LIMITED_MATRICES_H
