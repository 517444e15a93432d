#include "source/camera_name.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <regex>
#include <sstream>

namespace jqscope {
namespace {

constexpr char kGenicam[] = "genicam:";

bool IsNumber(const std::string& text) {
  return !text.empty() && text.size() < 4 &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
}

// Takes "@1280x720@30" off the end.
jqhost::CameraMode TakeMode(std::string& text) {
  static const std::regex pattern(
      "^(.*)@([0-9]{1,5})x([0-9]{1,5})(?:@([0-9]{1,4}(?:\\.[0-9]+)?))?$");
  jqhost::CameraMode mode;
  std::smatch found;
  const std::string whole = text;
  if (!std::regex_match(whole, found, pattern)) return mode;
  text = found[1];
  mode.size = cv::Size(std::stoi(found[2]), std::stoi(found[3]));
  if (found[4].matched) mode.rate = std::atof(found[4].str().c_str());
  return mode;
}

}  // namespace

std::optional<CameraName> ParseCameraName(const std::string& text) {
  CameraName camera;
  if (text.find("://") != std::string::npos) {
    camera.name = text;
    return camera;
  }
  camera.genicam = text.rfind(kGenicam, 0) == 0;
  camera.name = camera.genicam ? text.substr(sizeof kGenicam - 1) : text;
  camera.mode = TakeMode(camera.name);
  if (!camera.genicam && !IsNumber(camera.name)) return std::nullopt;
  return camera;
}

std::string CameraText(const CameraName& camera) {
  std::ostringstream text;
  text << (camera.genicam ? kGenicam : "") << camera.name;
  if (!camera.mode.size.empty()) {
    text << '@' << camera.mode.size.width << 'x' << camera.mode.size.height;
    if (camera.mode.rate > 0) text << '@' << camera.mode.rate;
  }
  return text.str();
}

}  // namespace jqscope
