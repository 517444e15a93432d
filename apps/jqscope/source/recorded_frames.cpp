#include "source/recorded_frames.h"

#include <filesystem>
#include <vector>

#include "host/input_error.h"
#include "host/journal/journal_reader.h"

namespace fs = std::filesystem;

namespace jqscope {
namespace {

class RecordedFrames : public jqhost::FrameSource {
 public:
  explicit RecordedFrames(const std::string& folder)
      : m_journal(folder, jqhost::JournalFolder::Use::kRead) {
    std::vector<std::string> files;
    const jqhost::JournalLog log = jqhost::ReadLog(m_journal);
    for (const jqhost::JournalStep& step : log.steps.Steps()) {
      if (step.frame) files.push_back(m_journal.FramePath(step.number));
    }
    if (files.empty()) throw jqhost::InputError("the journal '" + folder + "' holds no frames");
    m_files = jqhost::MakeFileSource(files);
  }

  bool Next(jqhost::SourceFrame& frame, bool read) override { return m_files->Next(frame, read); }
  int Total() const override { return m_files->Total(); }
  bool IsFileList() const override { return true; }

 private:
  const jqhost::JournalFolder m_journal;
  std::unique_ptr<jqhost::FrameSource> m_files;
};

}  // namespace

bool IsJournal(const std::string& folder) {
  std::error_code error;
  const fs::path path(folder);
  return fs::is_regular_file(path / "header.txt", error) &&
         fs::is_regular_file(path / "log.txt", error);
}

std::unique_ptr<jqhost::FrameSource> OpenRecordedFrames(const std::string& folder) {
  return std::make_unique<RecordedFrames>(folder);
}

}  // namespace jqscope
