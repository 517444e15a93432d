# The vector levels that are compiled, beside the plain x86-64 baseline: SSE4, AVX2
# and AVX-512. Levels in between would add code without adding speed.
add_compile_definitions("HWY_DISABLED_TARGETS=(HWY_SSSE3 | HWY_AVX3_DL)")
