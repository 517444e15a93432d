#ifndef JQHOST_RUN_GUARDED_CALL_H
#define JQHOST_RUN_GUARDED_CALL_H

#include <new>
#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// How a call of the library ended.
struct CallEnd {
  bool raised = false;
  bool outOfMemory = false;
  std::string what;  ///< of a call that raised
};

/// Makes a call of the library and turns what it raises into values: the library
/// promises that a failed call leaves the mosaic as it was.
template <typename Call>
CallEnd CallGuarded(Call&& call) {
  CallEnd end;
  try {
    call();
  } catch (const cv::Exception& error) {
    end = {true, error.code == cv::Error::StsNoMem, error.err};
  } catch (const std::bad_alloc&) {
    end = {true, true, std::string()};
  }
  if (end.outOfMemory) end.what = "out of memory";
  return end;
}

}  // namespace jqhost

#endif  // JQHOST_RUN_GUARDED_CALL_H
