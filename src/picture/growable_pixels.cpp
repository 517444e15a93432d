#include "picture/growable_pixels.h"

#include <cstddef>
#include <cstdint>

#include "picture/page_memory.h"

namespace jqstitching {
namespace {

/// Frees the pixels of growable matrices, and tells them from others. Headers do not carry
/// it: a header that is made anew takes its memory where it would have taken it.
class PageAllocator : public cv::MatAllocator {
 public:
  // Never destroyed, since a matrix may outlive whatever is.
  static const PageAllocator* Instance() {
    static const PageAllocator* const instance = new PageAllocator;
    return instance;
  }
  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData* data, cv::AccessFlag, cv::UMatUsageFlags) const override {
    return data != nullptr;
  }
  void deallocate(cv::UMatData* data) const override {
    ReturnPages(data->origdata, data->size);
    delete data;
  }
};

// Bytes of a picture; 0 for none, and where they are more than any object can have.
std::size_t PictureBytes(int rows, int cols, int type) {
  if (rows <= 0 || cols <= 0) return 0;
  const std::size_t row = static_cast<std::size_t>(cols) * CV_ELEM_SIZE(type);
  return row > PTRDIFF_MAX / static_cast<std::size_t>(rows) ? 0 : row * rows;
}

// A header on all of the pixels; it counts itself in.
cv::Mat WholeHeader(cv::UMatData* pixels, int rows, int cols, int type) {
  cv::Mat header(rows, cols, type, pixels->data);
  header.u = pixels;
  header.addref();
  return header;
}

}  // namespace

cv::Mat GrowableZeros(int rows, int cols, int type) {
  if (rows <= 0 || cols <= 0 || cv::Mat::getDefaultAllocator() != cv::Mat::getStdAllocator()) {
    return cv::Mat::zeros(rows, cols, type);
  }
  const std::size_t bytes = PictureBytes(rows, cols, type);
  void* const block = bytes == 0 ? nullptr : TakePages(bytes);
  if (block == nullptr) {
    CV_Error(cv::Error::StsNoMem,
             cv::format("no memory for a picture of %d x %d pixels", cols, rows));
  }
  cv::UMatData* pixels = nullptr;
  try {
    pixels = new cv::UMatData(PageAllocator::Instance());
  } catch (...) {
    ReturnPages(block, bytes);
    throw;
  }
  pixels->data = pixels->origdata = static_cast<uchar*>(block);
  pixels->size = bytes;
  return WholeHeader(pixels, rows, cols, type);
}

bool IsGrowable(const cv::Mat& picture) {
  return picture.u != nullptr && picture.u->currAllocator == PageAllocator::Instance() &&
         picture.dims == 2 && picture.data == picture.u->data && picture.isContinuous() &&
         picture.total() * picture.elemSize() == picture.u->size;
}

bool IsGrowableAlone(const cv::Mat& picture, int headers) {
  // Read in one piece: another thread may just be giving its header back.
  return IsGrowable(picture) && CV_XADD(&picture.u->refcount, 0) <= headers;
}

bool ResizePixels(cv::Mat& picture, int rows, int cols) {
  const std::size_t bytes = PictureBytes(rows, cols, picture.type());
  if (bytes == 0) return false;
  cv::UMatData* const pixels = picture.u;
  void* const block = ResizePages(pixels->origdata, pixels->size, bytes);
  if (block == nullptr) return false;
  pixels->data = pixels->origdata = static_cast<uchar*>(block);
  pixels->size = bytes;
  picture = WholeHeader(pixels, rows, cols, picture.type());
  return true;
}

}  // namespace jqstitching
