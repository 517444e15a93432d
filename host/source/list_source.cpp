#include "host/source/list_source.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <utility>

#include "host/input_error.h"
#include "host/source/path_list.h"
#include "host/source/picture_pages.h"
#include "host/system/plain_file.h"
#include "host/system/waiting_input.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr double kAskEvery = 0.1;  // seconds, in which a stop is not heard

class ListSource : public FrameSource {
 public:
  ListSource(const std::string& list, const std::vector<std::string>& first,
             std::vector<std::string> leftOut, const StopToken& stop, std::int64_t maxPixels)
      : m_name(list == "-" ? "standard input" : "the list '" + list + "'"),
        m_input(list),
        m_leftOut(std::move(leftOut)),
        m_stop(stop),
        m_maxPixels(maxPixels) {
    if (m_input.Error()) Fail();
    for (const PictureId& picture : ExpandPages(ExpandFolders(first, m_leftOut))) {
      m_ready.emplace_back(picture, std::string());
    }
  }

  bool Next(SourceFrame& frame, bool read) override {
    while (m_ready.empty()) {
      std::string line;
      if (!NextLine(line)) return false;
      if (!line.empty()) Expand(line);
    }
    const auto& [picture, why] = m_ready.front();
    frame = SourceFrame();
    frame.name = NameOf(picture);
    frame.number = ++m_number;
    frame.why = why;
    if (read && why.empty()) frame.image = ReadStored(picture, frame.why, m_maxPixels);
    m_ready.pop_front();
    return true;
  }

  int Total() const override { return 0; }
  bool IsFileList() const override { return false; }
  bool Waits() const override { return true; }

 private:
  [[noreturn]] void Fail() const {
    throw InputError("cannot read " + m_name + ": " + m_input.Error().message());
  }

  // The last line may lack its end.
  bool NextLine(std::string& line) {
    std::size_t end = m_text.find('\n');
    while (end == std::string::npos && !m_ended) {
      if (m_stop.Requested()) return false;
      m_ended = m_input.Read(m_text, kAskEvery) == WaitingInput::Got::kEnd;
      // Once frames were given, a list that fails has ended: the run keeps what it has.
      if (m_ended && m_input.Error() && m_number == 0) Fail();
      end = m_text.find('\n');
    }
    if (m_text.empty()) {
      if (m_number == 0) throw InputError(m_name + " names no files");
      return false;
    }
    line = m_text.substr(0, end);
    m_text.erase(0, end == std::string::npos ? end : end + 1);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
  }

  void Expand(const std::string& line) {
    const auto isLine = [&line](const std::string& output) { return IsSameFile(line, output); };
    if (std::any_of(m_leftOut.begin(), m_leftOut.end(), isLine)) {
      m_ready.emplace_back(PictureId{line, 0}, "this run itself writes it");
      return;
    }
    std::vector<std::string> files = {line};
    std::error_code error;
    try {
      if (fs::is_directory(line, error)) files = ListPictures(line, m_leftOut);
    } catch (const InputError& raised) {
      m_ready.emplace_back(PictureId{line, 0}, raised.what());
      return;
    }
    for (const PictureId& picture : ExpandPages(files)) {
      m_ready.emplace_back(picture, std::string());
    }
  }

  const std::string m_name;
  WaitingInput m_input;
  const std::vector<std::string> m_leftOut;
  const StopToken& m_stop;
  const std::int64_t m_maxPixels;
  std::string m_text;  // come, and not yet taken as a line
  bool m_ended = false;
  // Why a picture cannot be taken; empty: nothing known.
  std::deque<std::pair<PictureId, std::string>> m_ready;
  int m_number = 0;
};

}  // namespace

bool IsStreamedList(const std::string& list) {
  std::error_code error;
  return list == "-" || KindOfFile(list, error) == FileKind::kPipe;
}

std::unique_ptr<FrameSource> OpenListSource(const std::string& list,
                                            const std::vector<std::string>& first,
                                            const std::vector<std::string>& leftOut,
                                            const StopToken& stop, std::int64_t maxPixels) {
  return std::make_unique<ListSource>(list, first, leftOut, stop, maxPixels);
}

}  // namespace jqhost
