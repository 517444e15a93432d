#ifndef JQ_STITCHER_FRAME_POOL_H
#define JQ_STITCHER_FRAME_POOL_H

#include <mutex>
#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// Memory of camera frames, handed from one matrix to the next of the same number of
/// bytes: a run then pays for no fresh pages with every frame, although each frame is
/// converted into a new matrix.
///
/// One pool serves the process and is never destroyed, since a matrix, and even an empty
/// header, may outlive the stitcher that gave it this allocator. Spare memory is kept
/// only while a stitcher lives. Any thread may use it.
class FramePool : public cv::MatAllocator {
 public:
  static FramePool& Instance();

  /// An empty matrix that takes its memory from the pool.
  cv::Mat newMatrix();

  /// Every stitcher counts itself in and out. The last one frees what is spare.
  void addUser();
  void removeUser();

  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override;
  bool allocate(cv::UMatData* data, cv::AccessFlag flags, cv::UMatUsageFlags usage) const override;
  void deallocate(cv::UMatData* data) const override;

 private:
  FramePool() = default;
  // Gives back the oldest spares until so many are left.
  void shrink(size_t count) const;

  mutable std::mutex m_mutex;
  mutable std::vector<cv::UMatData*> m_spares;  // oldest first
  size_t m_capacity = 0;
};

/// Counts one stitcher in for as long as it lives.
class FramePoolUser {
 public:
  FramePoolUser() { FramePool::Instance().addUser(); }
  ~FramePoolUser() { FramePool::Instance().removeUser(); }
  FramePoolUser(const FramePoolUser&) = delete;
  FramePoolUser& operator=(const FramePoolUser&) = delete;
};

}  // namespace jqstitching

#endif  // JQ_STITCHER_FRAME_POOL_H
