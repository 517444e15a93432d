#ifndef JQ_TESTS_FUZZ_REQUIRE_H
#define JQ_TESTS_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

/// What must hold for every input: the fuzzer keeps an input for which it does not.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

#endif  // JQ_TESTS_FUZZ_REQUIRE_H
