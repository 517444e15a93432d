#include "run/recorder.h"

#include <filesystem>
#include <new>

#include "exit_codes.h"
#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/record/html_report.h"
#include "host/record/json_report.h"
#include "words/sample_words.h"
#include "words/summary.h"

using jqhost::FrameResult;
using jqhost::InputError;
using jqhost::Picture;

namespace jqstitch {
namespace {

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
                     {"output", m_options.output}});
  }
  m_begun = true;
  m_console.StartProgress(total, "frames");
}

void Recorder::OnFrame(const FrameResult& result, int done) {
  nlohmann::json event = FrameJson(m_record, result, m_words);
  event["event"] = "frame";
  m_console.Event(event);
  m_console.Progress(done);
}

void Recorder::NoteStopped(const std::string& by) {
  m_record.stoppedBy = by;
  Note("Stopped by " + by + "; what had been stitched until then is saved");
}

void Recorder::NoteSamples(const jqhost::FramePreparation& preparation) {
  m_record.samples = preparation.Summary();
  for (const std::string& note : SampleNotes(preparation)) Note(note);
}

void Recorder::Fail(const std::string& what) {
  m_console.Complain(what);
  m_console.Event({{"event", "error"}, {"text", what}});
}

bool Recorder::Save(const Picture& picture, cv::Mat& image) {
  std::string problem;
  try {
    image = jqhost::WithBackground(picture.image, m_options.background);
    m_record.picture = jqhost::SavePictureSomehow(
        m_options.output,
        m_record.samples.grey ? jqhost::AsGrey(image, m_options.background) : image, problem);
  } catch (const InputError& error) {
    problem = error.what();
  } catch (const std::bad_alloc&) {
    problem = "cannot write '" + m_options.output + "': out of memory";
  }
  if (!problem.empty()) Fail(problem);
  if (m_record.picture.empty()) return false;
  m_record.pictureSize = image.size();
  m_record.trimmedBy = picture.trimmedBy;
  m_console.Event({{"event", "picture"},
                   {"path", m_record.picture},
                   {"width", image.cols},
                   {"height", image.rows},
                   {"final", true}});
  return problem.empty();
}

bool Recorder::WriteReports(const cv::Mat& image) {
  bool written = true;
  for (const std::string& path : m_options.reports) {
    try {
      const std::string text =
          IsJsonReport(path)
              ? jqhost::JsonText(jqhost::ReportJson(m_record, m_words))
              : jqhost::HtmlReport(m_record, m_record.picture.empty() ? cv::Mat() : image, m_words);
      jqhost::WriteFileAtomically(path, text.data(), text.size());
    } catch (const std::exception& error) {
      Fail(error.what());
      written = false;
    }
  }
  return written;
}

int Recorder::Deliver(const Picture& picture) {
  m_console.EndProgress();
  cv::Mat image;
  const bool saved = !picture.image.empty() && Save(picture, image);
  m_record.seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
  if (m_truth) {
    const cv::Point2d scale(
        static_cast<double>(m_record.frameSize.width) / std::max(1, m_record.workingSize.width),
        static_cast<double>(m_record.frameSize.height) / std::max(1, m_record.workingSize.height));
    m_record.truth = CompareWithTruth(m_record.frames, *m_truth, scale);
  }
  const bool reported = WriteReports(image);
  const int exitCode = saved && reported ? ExitCodeOf(OutcomeOf(m_record)) : kExitWrongInput;
  m_console.Say(SummaryText(m_record));
  nlohmann::json event = jqhost::OutcomeJson(m_record);
  event["event"] = "summary";
  event["exitCode"] = exitCode;
  m_console.Event(event);
  return exitCode;
}

}  // namespace jqstitch
