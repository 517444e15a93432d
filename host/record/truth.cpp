#include "host/record/truth.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "host/input_error.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

bool ParseNumber(std::string text, double& value) {
  text.erase(0, text.find_first_not_of(" \t"));
  text.erase(text.find_last_not_of(" \t") + 1);
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() &&
         std::isfinite(value);
}

// Splits at the last two commas, because a file name may hold some itself.
bool SplitLine(const std::string& line, std::string& name, std::string& x, std::string& y) {
  const std::size_t second = line.rfind(',');
  if (second == std::string::npos || second == 0) return false;
  const std::size_t first = line.rfind(',', second - 1);
  if (first == std::string::npos) return false;
  name = line.substr(0, first);
  x = line.substr(first + 1, second - first - 1);
  y = line.substr(second + 1);
  return true;
}

void Summarize(std::vector<double> values, double& median, double& maximum) {
  if (values.empty()) return;
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  median = values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
  maximum = values.back();
}

}  // namespace

Truth Truth::Read(const std::string& path, const std::string& what) {
  std::error_code error;
  if (fs::exists(path, error) && !fs::is_regular_file(path, error)) {
    throw InputError("cannot read the " + what + " '" + path + "': it is not a plain file");
  }
  std::ifstream stream(path);
  if (!stream) {
    throw InputError("cannot read the " + what + " '" + path +
                     "': " + std::error_code(errno, std::generic_category()).message());
  }
  Truth truth;
  int number = 0, row = 0;
  const std::string file = "the " + what + " '" + path + "'";
  const auto notOfTheForm = [&file](int line) {
    return InputError(file + ", line " + std::to_string(line) + ": not of the form file,x,y");
  };
  for (std::string line; std::getline(stream, line);) {
    ++row;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    std::string name, x, y;
    cv::Point2d corner;
    const bool split = SplitLine(line, name, x, y);
    if (!split || !ParseNumber(x, corner.x) || !ParseNumber(y, corner.y)) {
      if (row == 1) continue;  // the header
      throw notOfTheForm(row);
    }
    truth.m_byNumber[++number] = corner;
    truth.m_byName[fs::path(name).filename().string()] = corner;
  }
  if (number == 0) throw InputError(file + " holds no lines file,x,y");
  return truth;
}

bool Truth::Find(const FrameResult& frame, cv::Point2d& corner) const {
  const auto named = m_byName.find(fs::path(frame.name).filename().string());
  if (named != m_byName.end()) {
    corner = named->second;
    return true;
  }
  const auto numbered = m_byNumber.find(frame.number);
  // Files are told by name alone: another folder's numbers would fit by chance.
  if (numbered == m_byNumber.end() || frame.name.rfind("frame ", 0) != 0) return false;
  corner = numbered->second;
  return true;
}

TruthComparison CompareWithTruth(const std::vector<FrameResult>& frames, const Truth& truth,
                                 cv::Point2d scale) {
  TruthComparison result;
  std::vector<double> neighbours, absolutes;
  bool hasFirst = false, hasPrevious = false;
  cv::Point2d firstGap, previousGap;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (!frames[i].Placed()) continue;
    cv::Point2d corner;
    if (!truth.Find(frames[i], corner)) {
      ++result.unknown;
      hasPrevious = false;
      continue;
    }
    // Where the frame was put minus where it belongs; equal gaps are no error.
    const cv::Point2d gap(frames[i].position.x * scale.x - corner.x,
                          frames[i].position.y * scale.y - corner.y);
    if (!hasFirst) firstGap = gap;
    hasFirst = true;
    PositionError entry;
    entry.frame = i;
    entry.absolute = cv::norm(gap - firstGap);
    absolutes.push_back(entry.absolute);
    if (hasPrevious) {
      const cv::Point2d slip = gap - previousGap;
      entry.neighbour = cv::norm(slip);
      entry.neighbourAxis = std::max(std::abs(slip.x), std::abs(slip.y));
      result.neighbourAxisMaximum = std::max(result.neighbourAxisMaximum, entry.neighbourAxis);
      neighbours.push_back(entry.neighbour);
    }
    previousGap = gap;
    hasPrevious = true;
    result.errors.push_back(entry);
  }
  Summarize(neighbours, result.neighbourMedian, result.neighbourMaximum);
  Summarize(absolutes, result.absoluteMedian, result.absoluteMaximum);
  return result;
}

}  // namespace jqhost
