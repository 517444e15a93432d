// What every fuzzer tells the sanitizers.

#define JQ_SANITIZER_HOOK extern "C" __attribute__((visibility("default")))

// A request that the system cannot meet fails as it does without the sanitizer.
JQ_SANITIZER_HOOK const char* __asan_default_options();
const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=1024:"
         "detect_stack_use_after_return=1";
}

JQ_SANITIZER_HOOK const char* __ubsan_default_options();
const char* __ubsan_default_options() {
  return "print_stacktrace=1";
}

// The image library's readers lose memory over damaged files: they leave by a jump
// or an exception with a buffer in hand. And it takes a matrix's pixels before the
// header that owns them, which loses the pixels where the header is refused.
JQ_SANITIZER_HOOK const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
  return "leak:libopencv_imgcodecs\n"
         "leak:cv::fastMalloc\n";
}
