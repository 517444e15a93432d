#ifndef JQHOST_TESTS_ASSEMBLE_GRAPH_SUPPORT_H
#define JQHOST_TESTS_ASSEMBLE_GRAPH_SUPPORT_H

#include <vector>

#include "host/assemble/link.h"

namespace jqhost_test {

// A link of 100 matches.
inline jqhost::Link MakeLink(std::size_t first, std::size_t second, cv::Point2d shift,
                             double confidence = 1.0,
                             jqhost::LinkGrade grade = jqhost::LinkGrade::kSound) {
  jqhost::Link link;
  link.first = first;
  link.second = second;
  link.shift = shift;
  link.confidence = confidence;
  link.matches = 100;
  link.grade = grade;
  return link;
}

// The same, already in use.
inline jqhost::Link Used(std::size_t first, std::size_t second, cv::Point2d shift,
                         double confidence = 1.0) {
  jqhost::Link link = MakeLink(first, second, shift, confidence);
  link.state = jqhost::LinkState::kUsed;
  return link;
}

inline std::vector<std::size_t> NumbersOf(const std::vector<jqhost::Link>& links,
                                          jqhost::LinkState state) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < links.size(); ++i) {
    if (links[i].state == state) numbers.push_back(i);
  }
  return numbers;
}

}  // namespace jqhost_test

#endif  // JQHOST_TESTS_ASSEMBLE_GRAPH_SUPPORT_H
