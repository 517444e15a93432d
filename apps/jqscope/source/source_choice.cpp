#include "source/source_choice.h"

#include <filesystem>

#include "host/journal/journal_header.h"
#include "host/source/follow_source.h"
#include "host/source/genicam_source.h"
#include "source/recorded_frames.h"

namespace jqscope {
namespace {

// A person watches a folder until they stop: about thirty years.
constexpr double kPatience = 1e9;

constexpr char kMicroscopeName[] = "microscope";

std::unique_ptr<jqhost::FrameSource> OpenCamera(const CameraName& camera,
                                                const jqhost::StopToken& stop) {
  if (camera.genicam) return jqhost::OpenGenicamCamera(camera.name, camera.mode, stop);
  if (camera.name.find("://") != std::string::npos) {
    return jqhost::MakeVideoSource(camera.name, 0);
  }
  return jqhost::MakeVideoSource(std::string(), std::stoi(camera.name), camera.mode);
}

}  // namespace

SourceChoice ChooseSource(const std::string& text) {
  SourceChoice choice;
  std::error_code error;
  if (text.empty() || text == kMicroscopeName) return choice;
  if (!std::filesystem::exists(text, error)) {
    if (const std::optional<CameraName> camera = ParseCameraName(text)) {
      choice.kind = SourceKind::kCamera;
      choice.camera = *camera;
      return choice;
    }
  }
  choice.kind = SourceKind::kFiles;
  choice.paths = {text};
  return choice;
}

std::vector<std::string> SourceWords(const SourceChoice& choice) {
  if (choice.kind == SourceKind::kMicroscope) return {kMicroscopeName};
  if (choice.kind == SourceKind::kCamera) return {CameraText(choice.camera)};
  return jqhost::AbsoluteSource(choice.paths);
}

SourceChoice ChooseSource(const std::vector<std::string>& words) {
  if (words.size() == 1) return ChooseSource(words.front());
  SourceChoice choice;
  choice.kind = SourceKind::kFiles;
  choice.paths = words;
  return choice;
}

std::unique_ptr<jqhost::FrameSource> OpenSource(const SourceChoice& choice, Stage& stage,
                                                const jqhost::StopToken& stop) {
  switch (choice.kind) {
    case SourceKind::kMicroscope:
      return OpenMicroscope(choice.microscope, stage, stop);
    case SourceKind::kWatched:
      return jqhost::FollowFolder(choice.paths.front(), kPatience, choice.leftOut, stop);
    case SourceKind::kCamera:
      return OpenCamera(choice.camera, stop);
    case SourceKind::kFiles:
      break;
  }
  const std::string& path = choice.paths.front();
  if (choice.paths.size() == 1 && IsJournal(path)) return OpenRecordedFrames(path);
  return jqhost::OpenFrameSource(choice.paths, choice.leftOut);
}

}  // namespace jqscope
