#ifndef JQ_TESTS_SUPPORT_OUTCOME_H
#define JQ_TESTS_SUPPORT_OUTCOME_H

#include <opencv2/core.hpp>
#include <ostream>
#include <stdexcept>

/// How a call ended, so that two implementations can be compared in failing too.
enum class Outcome { kReturned, kImageLibraryError, kOutOfRange, kOther };

inline std::ostream& operator<<(std::ostream& out, Outcome outcome) {
  switch (outcome) {
    case Outcome::kReturned:
      return out << "returned";
    case Outcome::kImageLibraryError:
      return out << "threw cv::Exception";
    case Outcome::kOutOfRange:
      return out << "threw std::out_of_range";
    default:
      return out << "threw something else";
  }
}

/// Runs the call and tells how it ended. The image library prints every error
/// that it raises; here they are expected and stay silent.
template <class Call>
Outcome Ending(Call&& call) {
  cv::redirectError([](int, const char*, const char*, const char*, int, void*) { return 0; });
  Outcome outcome = Outcome::kReturned;
  try {
    call();
  } catch (const cv::Exception&) {
    outcome = Outcome::kImageLibraryError;
  } catch (const std::out_of_range&) {
    outcome = Outcome::kOutOfRange;
  } catch (const std::exception&) {
    outcome = Outcome::kOther;
  }
  cv::redirectError(nullptr);
  return outcome;
}

#endif  // JQ_TESTS_SUPPORT_OUTCOME_H
