#include "journal/journal_shelf.h"

#include <QDateTime>
#include <algorithm>
#include <filesystem>
#include <functional>

#include "host/input_error.h"
#include "host/journal/journal_reader.h"

namespace fs = std::filesystem;

namespace jqscope {
namespace {

constexpr char kKept[] = "kept";

std::optional<LeftRun> ReadLeftRun(const std::string& folder) {
  try {
    const jqhost::JournalFolder journal(folder, jqhost::JournalFolder::Use::kWrite);
    const jqhost::JournalLog log = jqhost::ReadLog(journal);
    LeftRun left;
    left.folder = folder;
    left.source = journal.Header().source;
    left.damaged = !log.damage.empty();
    for (const jqhost::JournalStep& step : log.steps.Steps()) {
      if (!step.frame) continue;
      ++left.frames;
      left.last = *step.frame;
    }
    if (left.frames > 0) return left;
  } catch (const jqhost::InputError&) {
    // A run that goes on in another window, or no journal at all.
  }
  return std::nullopt;
}

}  // namespace

std::string NewJournalFolder(const std::string& shelf) {
  const QString name = QDateTime::currentDateTime().toString("yyyy-MM-dd HH.mm.ss.zzz");
  return (fs::path(shelf) / name.toStdString()).string();
}

std::optional<LeftRun> FindLeftRun(const std::string& shelf) {
  std::vector<std::string> folders;
  std::error_code error;
  for (fs::directory_iterator at(shelf, error), end; !error && at != end; at.increment(error)) {
    std::error_code ignored;
    if (at->is_directory(ignored) && at->path().filename() != kKept) {
      folders.push_back(at->path().string());
    }
  }
  std::sort(folders.begin(), folders.end(), std::greater<>());
  for (const std::string& folder : folders) {
    if (std::optional<LeftRun> left = ReadLeftRun(folder)) return left;
  }
  return std::nullopt;
}

void PutAway(const std::string& folder, JournalEnd end) {
  if (end == JournalEnd::kLeave) return;
  // Held until it is gone, so that no other window takes it up meanwhile.
  const jqhost::JournalFolder held(folder, jqhost::JournalFolder::Use::kWrite);
  const fs::path path(folder);
  std::error_code error;
  if (end == JournalEnd::kRemove) {
    fs::remove_all(path, error);
  } else {
    const fs::path kept = path.parent_path() / kKept;
    fs::create_directories(kept, error);
    if (!error) fs::rename(path, kept / path.filename(), error);
  }
  if (error) {
    throw jqhost::InputError("cannot put the journal '" + folder + "' away: " + error.message());
  }
}

}  // namespace jqscope
