#ifndef JQ_TESTS_SUPPORT_CPU_LEVELS_H
#define JQ_TESTS_SUPPORT_CPU_LEVELS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cpu/level.h"

/// The vector levels at which every property test runs: all that this machine
/// can.
inline std::vector<std::string> CpuLevels() {
  std::vector<std::string> names;
  for (jqstitching::cpu::Level level : jqstitching::cpu::SupportedLevels()) {
    names.push_back(jqstitching::cpu::Name(level));
  }
  return names;
}

/// Forces a level for as long as it lives.
class ScopedCpuLevel {
 public:
  explicit ScopedCpuLevel(const std::string& name) {
    EXPECT_TRUE(jqstitching::cpu::Force(jqstitching::cpu::FromName(name))) << name;
    EXPECT_STREQ(jqstitching::cpu::Name(jqstitching::cpu::Running()), name.c_str());
  }
  ~ScopedCpuLevel() { jqstitching::cpu::Force(std::nullopt); }
  ScopedCpuLevel(const ScopedCpuLevel&) = delete;
  ScopedCpuLevel& operator=(const ScopedCpuLevel&) = delete;
};

#endif  // JQ_TESTS_SUPPORT_CPU_LEVELS_H
