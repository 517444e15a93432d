#ifndef JQ_BENCH_REPORT_READ_HOOK_H
#define JQ_BENCH_REPORT_READ_HOOK_H

namespace jqbench {

/// Told of every file that library, plain twin or report read (not of those that
/// the platform's shared library reads for its size check).
class ReadHook {
 public:
  virtual ~ReadHook() = default;
  virtual void beforeRead() = 0;
  virtual void afterRead() = 0;
};

/// Sets the hook of the calling thread; null for none.
void SetReadHook(ReadHook* hook);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_READ_HOOK_H
