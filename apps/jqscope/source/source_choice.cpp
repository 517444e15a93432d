#include "source/source_choice.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "host/journal/journal_header.h"
#include "host/source/follow_source.h"

namespace jqscope {
namespace {

// A person watches a folder until they stop: about thirty years.
constexpr double kPatience = 1e9;

bool IsCameraName(const std::string& text) {
  const bool isNumber =
      !text.empty() && text.size() < 4 &&
      std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
  return isNumber || text.find("://") != std::string::npos;
}

constexpr char kMicroscopeName[] = "microscope";

}  // namespace

SourceChoice ChooseSource(const std::string& text) {
  SourceChoice choice;
  std::error_code error;
  if (text.empty() || text == kMicroscopeName) return choice;
  choice.paths = {text};
  const bool exists = std::filesystem::exists(text, error);
  choice.kind = !exists && IsCameraName(text) ? SourceKind::kCamera : SourceKind::kFiles;
  return choice;
}

std::vector<std::string> SourceWords(const SourceChoice& choice) {
  if (choice.kind == SourceKind::kMicroscope) return {kMicroscopeName};
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
    case SourceKind::kFiles:
      break;
  }
  return jqhost::OpenFrameSource(choice.paths, choice.leftOut);
}

}  // namespace jqscope
