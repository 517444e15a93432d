#ifndef JQSCOPE_SOURCE_SOURCE_CHOICE_H
#define JQSCOPE_SOURCE_SOURCE_CHOICE_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/journal/journal_entries.h"
#include "source/camera_name.h"
#include "source/simulated_microscope.h"

namespace jqscope {

enum class SourceKind {
  kMicroscope,  ///< the simulated one
  kCamera,      ///< `camera` names it
  kFiles,       ///< pictures, a folder, a video file, the journal of an earlier run
  kWatched,     ///< a folder that grows
};

/// Where frames shall come from.
struct SourceChoice {
  SourceKind kind = SourceKind::kMicroscope;
  std::vector<std::string> paths;    ///< files, or the folder
  std::vector<std::string> leftOut;  ///< pictures that are no frames: the program writes them
  MicroscopeOptions microscope;
  CameraName camera;
  /// Of a run that is taken up: frames up to this one are passed over. Not for live ones.
  std::optional<jqhost::FrameEntry> after;

  /// Whether frames come on their own time, so that those not taken are gone.
  bool IsLive() const { return kind == SourceKind::kMicroscope || kind == SourceKind::kCamera; }
};

/// What a path, address or number given by a person stands for.
SourceChoice ChooseSource(const std::string& text);

/// The words by which a journal names the source, and the choice that they stand for.
std::vector<std::string> SourceWords(const SourceChoice& choice);
SourceChoice ChooseSource(const std::vector<std::string>& words);

/// Raises `InputError`. @param stage, stop must outlive the source
std::unique_ptr<jqhost::FrameSource> OpenSource(const SourceChoice& choice, Stage& stage,
                                                const jqhost::StopToken& stop);

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_SOURCE_CHOICE_H
