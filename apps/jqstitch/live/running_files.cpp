#include "live/running_files.h"

#include "host/output/picture.h"
#include "host/output/save_picture.h"
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
    Save(false);
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
  if (!m_options.preview.empty()) Save(true);
}

// While frames come in, what cannot be saved is no reason to stop.
void RunningFiles::Save(bool isPreview) {
  const PictureOptions& options = m_options.run.picture;
  const bool grey = m_preparation.Summary().grey;
  jqhost::SaveOptions save;
  try {
    cv::Mat image = m_session.PictureSoFar(options.trim).image;
    if (isPreview) {
      save.path = m_options.preview;
      image = jqhost::Shrink(image, kPreviewSide, options.background);
      if (grey) image = jqhost::AsGrey(image, options.background);
    } else {
      const jqhost::FrameJudge& judge = m_session.Judge();
      save = MakeSaveOptions(options, grey,
                             PicturePixelSize(options, judge.FrameSize(), judge.WorkingSize()));
    }
    jqhost::SavePicture(image, save, jqhost::SaveProgress(), jqhost::StopToken());
    m_console.Event({{"event", isPreview ? "preview" : "picture"},
                     {"path", save.path},
                     {"width", image.cols},
                     {"height", image.rows},
                     {"final", false}});
  } catch (const std::exception& error) {
    m_console.Complain(error.what());
  }
}

}  // namespace jqstitch
