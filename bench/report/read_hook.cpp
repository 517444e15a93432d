#include "report/read_hook.h"

#include <opencv2/core.hpp>
#include <string>

namespace {

thread_local jqbench::ReadHook* t_hook = nullptr;

}  // namespace

// The linker sends every call of cv::imread here; the name is the mangled one.
#define JQ_IMREAD(PREFIX) \
  PREFIX##_ZN2cv6imreadERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEi

extern "C" cv::Mat JQ_IMREAD(__real_)(const std::string& path, int flags);

extern "C" __attribute__((visibility("default"))) cv::Mat JQ_IMREAD(__wrap_)(
    const std::string& path, int flags) {
  if (t_hook == nullptr) return JQ_IMREAD(__real_)(path, flags);
  t_hook->beforeRead();
  cv::Mat picture = JQ_IMREAD(__real_)(path, flags);
  t_hook->afterRead();
  return picture;
}

namespace jqbench {

void SetReadHook(ReadHook* hook) {
  t_hook = hook;
}

}  // namespace jqbench
