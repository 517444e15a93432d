#include "run/recorder.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <new>

#include "exit_codes.h"
#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/coverage.h"
#include "host/output/save_picture.h"
#include "host/output/scale_bar.h"
#include "host/record/html_report.h"
#include "host/record/json_report.h"
#include "host/system/process_memory.h"
#include "run/seconds_since.h"
#include "words/live_status.h"
#include "words/sample_words.h"
#include "words/summary.h"

using jqhost::FrameResult;
using jqhost::InputError;
using jqhost::Picture;

namespace jqstitch {
namespace {

constexpr int kWorthABar = 20;  // megapixels

bool IsJsonReport(const std::string& path) {
  return std::filesystem::path(path).extension() == ".json";
}

}  // namespace

Recorder::Recorder(const std::string& command, const RunOptions& options, Console& console)
    : m_options(options), m_console(console), m_start(std::chrono::steady_clock::now()) {
  m_record.program = "jqstitch " JQSTITCH_VERSION;
  m_record.command = command;
  if (!options.truth.empty()) m_truth = jqhost::Truth::Read(options.truth);
}

void Recorder::OnBegin(int total) {
  if (!m_begun) {
    m_start = std::chrono::steady_clock::now();
    m_console.Event({{"event", "start"},
                     {"command", m_record.command},
                     {"total", total > 0 ? nlohmann::json(total) : nlohmann::json()},
                     {"output", m_options.picture.output}});
  }
  m_begun = true;
  m_console.StartProgress(total, "frames");
}

nlohmann::json Recorder::FrameEvent(const FrameResult& result) const {
  nlohmann::json event = FrameJson(m_record, result, m_words);
  event["event"] = "frame";
  return event;
}

void Recorder::OnFrame(const FrameResult& result, int done) {
  m_console.Event(FrameEvent(result));
  m_console.Progress(done);
}

void Recorder::OnLiveFrame(const FrameResult& result, int done, const jqhost::Track& track) {
  const std::int64_t memory = jqhost::ResidentBytes();
  const std::string status = StatusText(m_record, track, result, memory);
  nlohmann::json event = FrameEvent(result);
  event["status"] = status;
  event["rate"] = done / std::max(SecondsSince(m_start), 1e-3);
  event["memory"] = memory;
  event["lost"] = nullptr;
  if (track.IsLost()) {
    event["lost"] = {{"since", track.LostSince()}, {"goBackTo", track.LastHeld()}};
  }
  m_console.Event(event);
  m_console.Progress(done, status);
}

void Recorder::NoteStopped(const std::string& by) {
  m_record.stoppedBy = by;
  Note("Stopped by " + by + "; what had been stitched until then is saved");
}

void Recorder::NoteSamples(const jqhost::FramePreparation& preparation) {
  m_record.samples = preparation.Summary();
  for (const std::string& note : SampleNotes(preparation)) Note(note);
}

// The first frame alone is no reason to replace a picture that stands there already.
bool Recorder::MaySave() const {
  std::error_code error;
  return !OnlyFirstPlaced(m_record) || !std::filesystem::exists(m_options.picture.output, error);
}

bool Recorder::Save(const Picture& picture, const jqhost::StopToken& stop) {
  const auto save = [this](const std::string& path, const std::function<bool()>& write) {
    try {
      if (write()) return true;
      Fail("saving '" + path + "' was stopped; what stood there is left as it was");
    } catch (const InputError& error) {
      Fail(error.what());
    } catch (const std::bad_alloc&) {
      Fail("cannot write '" + path + "': out of memory");
    }
    return false;
  };
  m_record.pictureSize = picture.image.size();
  m_record.pixelSize =
      PicturePixelSize(m_options.picture, m_record.frameSize, m_record.workingSize);
  m_record.background = m_options.picture.background;
  const bool saved = save(m_options.picture.output, [&] { return SavePicture(picture, stop); });
  const std::string& mask = m_options.picture.coverage;
  const bool masked = mask.empty() || save(mask, [&] { return SaveCoverage(stop); });
  return saved && masked && m_failures.empty();
}

bool Recorder::SavePicture(const Picture& picture, const jqhost::StopToken& stop) {
  const jqhost::SaveOptions options =
      MakeSaveOptions(m_options.picture, m_record.samples.grey, m_record.pixelSize);
  if (options.scaleBar && !jqhost::PlanScaleBar(picture.image.size(), options.pixelSize->width)) {
    Note("The picture is too small for a scale bar");
  }
  const jqhost::SavedPicture saved = jqhost::SavePictureSomehow(
      picture.image, options, ShowProgress(picture.image.size(), options.path), stop);
  m_console.EndProgress();
  if (saved.path.empty()) return false;
  if (!saved.problem.empty()) Fail(saved.problem);
  m_record.picture = saved.path;
  m_record.trimmedBy = picture.trimmedBy;
  m_console.Event({{"event", "picture"},
                   {"path", m_record.picture},
                   {"width", picture.image.cols},
                   {"height", picture.image.rows},
                   {"final", true}});
  return true;
}

bool Recorder::SaveCoverage(const jqhost::StopToken& stop) {
  jqhost::SaveOptions options;
  options.path = m_options.picture.coverage;
  options.pixelSize = m_record.pixelSize;
  return jqhost::SavePixels(jqhost::CoveragePixels(m_record), options, jqhost::SaveProgress(),
                            stop);
}

// Of a picture that takes a while.
jqhost::SaveProgress Recorder::ShowProgress(cv::Size size, const std::string& path) {
  const int megapixels = static_cast<int>(1e-6 * size.width * size.height);
  if (megapixels < kWorthABar) return jqhost::SaveProgress();
  const std::string status = "Saving " + std::filesystem::path(path).filename().string();
  m_console.StartProgress(megapixels, "megapixels");
  return [this, megapixels, status](double share) {
    m_console.Progress(static_cast<int>(share * megapixels), status);
  };
}

void Recorder::WriteReports(const cv::Mat& image) {
  for (const std::string& path : m_options.reports) {
    try {
      const std::string text =
          IsJsonReport(path)
              ? jqhost::JsonText(jqhost::ReportJson(m_record, m_words))
              : jqhost::HtmlReport(m_record, m_record.picture.empty() ? cv::Mat() : image, m_words);
      jqhost::WriteFileAtomically(path, text.data(), text.size());
    } catch (const std::exception& error) {
      Fail(error.what());
    }
  }
}

void Recorder::CompareWithTruth() {
  // A single place has no error.
  if (!m_truth || CountPlaced(m_record) < 2) return;
  const cv::Point2d scale(
      static_cast<double>(m_record.frameSize.width) / std::max(1, m_record.workingSize.width),
      static_cast<double>(m_record.frameSize.height) / std::max(1, m_record.workingSize.height));
  m_record.truth = jqhost::CompareWithTruth(m_record.frames, *m_truth, scale);
}

int Recorder::Deliver(const Picture& picture, const jqhost::StopToken& stop) {
  m_console.EndProgress();
  const jqhost::StopToken never;
  bool saved = false;
  if (!picture.image.empty() && !MaySave()) {
    saved = true;
    Note("'" + m_options.picture.output + "' is left as it was, because no frame was placed");
  } else if (!picture.image.empty()) {
    saved = Save(picture, stop.Requested() ? never : stop);
  }
  m_record.seconds = SecondsSince(m_start);
  CompareWithTruth();
  WriteReports(picture.image);
  const int exitCode =
      saved && m_failures.empty() ? ExitCodeOf(OutcomeOf(m_record)) : kExitWrongInput;
  m_console.Say(SummaryText(m_record));
  for (const std::string& failure : m_failures) {
    m_console.Complain(failure);
    m_console.Event({{"event", "error"}, {"text", failure}});
  }
  nlohmann::json event = jqhost::OutcomeJson(m_record);
  event["event"] = "summary";
  event["exitCode"] = exitCode;
  m_console.Event(event);
  return exitCode;
}

}  // namespace jqstitch
