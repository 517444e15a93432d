#ifndef JQ_BLEND_KERNELS_SCRATCH_BUFFER_H
#define JQ_BLEND_KERNELS_SCRATCH_BUFFER_H

#include <cstddef>
#include <new>

#include <hwy/aligned_allocator.h>

namespace jqstitching {

/// Memory that is kept from frame to frame and only replaced by a larger piece.
/// Its contents are unspecified after `reserve`.
template <class T>
class ScratchBuffer {
 public:
  /// `std::bad_alloc` leaves the buffer empty.
  T* reserve(std::size_t count) {
    if (count > m_count) {
      m_count = 0;
      m_data.reset();
      m_data = hwy::AllocateAligned<T>(count);
      if (!m_data) throw std::bad_alloc();
      m_count = count;
    }
    return m_data.get();
  }
  T* data() const { return m_data.get(); }

 private:
  hwy::AlignedFreeUniquePtr<T[]> m_data;
  std::size_t m_count = 0;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_SCRATCH_BUFFER_H
