#include "live/running_files.h"

#include "host/output/picture.h"
#include "run/seconds_since.h"

namespace jqstitch {
namespace {

constexpr int kPreviewSide = 1280;
constexpr double kPreviewEvery = 1.0;  // seconds

}  // namespace

RunningFiles::RunningFiles(const LiveOptions& options, Console& console,
                           const jqhost::PushSession& session,
                           const jqhost::FramePreparation& preparation)
    : m_options(options), m_console(console), m_session(session), m_preparation(preparation) {}

void RunningFiles::Refresh(const jqhost::FrameResult& result) {
  if (result.Placed()) {
    ++m_placed;
    m_unshown = true;
    // The first frame alone does not replace an earlier picture.
    m_unsaved = m_placed > 1;
  }
  if (m_unsaved && m_options.saveEvery > 0 && SecondsSince(m_lastSave) >= m_options.saveEvery) {
    Save(m_options.run.output, 0, false);
    m_lastSave = Clock::now();
    m_unsaved = false;
  }
  if (m_unshown && !m_options.preview.empty() && SecondsSince(m_lastPreview) >= kPreviewEvery) {
    SavePreview();
    m_lastPreview = Clock::now();
    m_unshown = false;
  }
}

void RunningFiles::SavePreview() {
  if (!m_options.preview.empty()) Save(m_options.preview, kPreviewSide, true);
}

// While frames come in, a picture that cannot be saved is no reason to stop.
void RunningFiles::Save(const std::string& path, int longest, bool isPreview) {
  try {
    const cv::Mat whole = m_session.PictureSoFar(m_options.run.trim).image;
    const cv::Mat image = longest > 0 ? jqhost::Shrink(whole, longest, m_options.run.background)
                                      : jqhost::WithBackground(whole, m_options.run.background);
    const bool grey = m_preparation.Summary().grey;
    jqhost::SavePicture(path, grey ? jqhost::AsGrey(image, m_options.run.background) : image);
    m_console.Event({{"event", isPreview ? "preview" : "picture"},
                     {"path", path},
                     {"width", image.cols},
                     {"height", image.rows},
                     {"final", false}});
  } catch (const std::exception& error) {
    m_console.Complain(error.what());
  }
}

}  // namespace jqstitch
