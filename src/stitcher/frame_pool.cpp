#include "stitcher/frame_pool.h"

namespace jqstitching {
namespace {

// A call at a level above 1 frees one camera frame and up to four shrunken ones.
constexpr size_t kSparesPerUser = 5;

// The library's own allocator, which outlives every other.
cv::MatAllocator& Source() {
  return *cv::Mat::getStdAllocator();
}

}  // namespace

FramePool& FramePool::Instance() {
  static FramePool* const pool = new FramePool;
  return *pool;
}

cv::Mat FramePool::newMatrix() {
  cv::Mat matrix;
  matrix.allocator = this;
  return matrix;
}

void FramePool::addUser() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  // Giving memory back must not need any.
  m_spares.reserve(m_capacity + kSparesPerUser);
  m_capacity += kSparesPerUser;
}

void FramePool::removeUser() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_capacity -= kSparesPerUser;
  shrink(m_capacity);
}

cv::UMatData* FramePool::allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                                  cv::AccessFlag flags, cv::UMatUsageFlags usage) const {
  if (data == nullptr) {
    size_t bytes = CV_ELEM_SIZE(type);
    for (int i = dims - 1; i >= 0; --i) {
      if (step != nullptr) step[i] = bytes;
      bytes *= static_cast<size_t>(sizes[i]);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (auto spare = m_spares.begin(); spare != m_spares.end(); ++spare) {
      if ((*spare)->size != bytes) continue;
      cv::UMatData* const found = *spare;
      m_spares.erase(spare);
      return found;
    }
  }
  cv::UMatData* const fresh = Source().allocate(dims, sizes, type, data, step, flags, usage);
  // Memory of the caller's own goes back to the caller, not here.
  if (data == nullptr) fresh->currAllocator = this;
  return fresh;
}

bool FramePool::allocate(cv::UMatData* data, cv::AccessFlag, cv::UMatUsageFlags) const {
  return data != nullptr;
}

void FramePool::deallocate(cv::UMatData* data) const {
  if (data == nullptr) return;
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_capacity == 0) {
    Source().deallocate(data);
    return;
  }
  shrink(m_capacity - 1);
  m_spares.push_back(data);
}

void FramePool::shrink(size_t count) const {
  while (m_spares.size() > count) {
    Source().deallocate(m_spares.front());
    m_spares.erase(m_spares.begin());
  }
}

}  // namespace jqstitching
