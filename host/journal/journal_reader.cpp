#include "host/journal/journal_reader.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <opencv2/imgcodecs.hpp>
#include <sstream>

#include "host/input_error.h"
#include "host/journal/crc32.h"
#include "host/journal/journal_line.h"
#include "host/source/guarded_decode.h"
#include "host/source/header_size.h"
#include "host/system/plain_file.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

std::string ReadAll(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw InputError("cannot read '" + path + "': it cannot be opened");
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// Why the file of a frame is not whole; empty when it has its length or more.
std::string WhyIncomplete(const JournalFolder& folder, const FrameEntry& frame) {
  const std::string path = folder.FramePath(frame.number);
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(path, error);
  if (error) return "'" + path + "' is missing";
  if (bytes >= frame.bytes) return std::string();
  return "'" + path + "' has " + std::to_string(bytes) + " of its " + std::to_string(frame.bytes) +
         " bytes";
}

int NumberOf(const JournalEntry& entry) {
  if (const auto* frame = std::get_if<FrameEntry>(&entry)) return frame->number;
  if (const auto* place = std::get_if<ContinueEntry>(&entry)) return place->number;
  return 0;
}

class LogReader {
 public:
  LogReader(const JournalFolder& folder, JournalLog& log) : m_folder(folder), m_log(log) {}

  void Read(const std::string& text) {
    std::size_t begin = 0, line = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
      ++line;
      TakeLine(std::string_view(text).substr(begin, end - begin), line, end + 1);
      if (!m_log.damage.empty()) return;
    }
    if (begin < text.size()) {
      m_log.torn.push_back("the last line of '" + m_folder.LogPath() + "' is cut short");
    }
    NameUnfinishedFrame();
  }

 private:
  void TakeLine(std::string_view text, std::size_t line, std::uint64_t end) {
    try {
      const JournalEntry entry = ReadEntry(DecodeLine(text));
      CheckNumber(entry);
      const auto* frame = std::get_if<FrameEntry>(&entry);
      const std::string incomplete = frame == nullptr ? "" : WhyIncomplete(m_folder, *frame);
      if (!incomplete.empty()) {
        m_log.torn.push_back(incomplete);
      } else if (m_log.torn.empty()) {
        Take(entry);
        m_log.length = end;
        m_log.lastNumber = m_last;
      } else if (frame != nullptr) {
        // A whole frame comes after it: that was no end of a run.
        throw InputError("it comes after a frame that was lost: " + m_log.torn.front());
      }
    } catch (const InputError& wrong) {
      m_log.damage =
          "line " + std::to_string(line) + " of '" + m_folder.LogPath() + "': " + wrong.what();
    }
  }

  void Take(const JournalEntry& entry) {
    if (const auto* picture = std::get_if<PictureEntry>(&entry)) {
      m_log.picture = RecordedPicture{*picture, m_log.steps};
      m_log.picture->steps.Drop(picture->without);
    } else {
      m_log.steps.Take(entry);
    }
  }

  void CheckNumber(const JournalEntry& entry) {
    const int number = NumberOf(entry);
    if (number == 0) return;
    if (number != m_last + 1) {
      throw InputError("its number is " + std::to_string(number) + " where " +
                       std::to_string(m_last + 1) + " comes next");
    }
    m_last = number;
  }

  // A frame's file is written before its line.
  void NameUnfinishedFrame() {
    const std::string path = m_folder.FramePath(m_last + 1);
    std::error_code error;
    if (fs::exists(path, error)) m_log.torn.push_back("'" + path + "' was not finished");
  }

  const JournalFolder& m_folder;
  JournalLog& m_log;
  int m_last = 0;  // number read last, lost frames among them
};

}  // namespace

JournalLog ReadLog(const JournalFolder& folder) {
  JournalLog log(folder.Header().stitch.detectLevel);
  std::error_code error;
  // A run that was killed before its first frame has none.
  if (KindOfFile(folder.LogPath(), error) == FileKind::kMissing) return log;
  LogReader(folder, log).Read(ReadAll(folder.LogPath()));
  return log;
}

cv::Mat ReadFrameFile(const JournalFolder& folder, const FrameEntry& frame) {
  const std::string path = folder.FramePath(frame.number);
  const auto fail = [&](const std::string& why) { throw InputError("'" + path + "' " + why); };
  // Looked at before it is read, since any file can stand there by now.
  std::error_code error;
  if (KindOfFile(path, error) != FileKind::kPlain) fail("is no plain file");
  if (fs::file_size(path, error) != frame.bytes) fail("has changed: it has another length");
  const std::string bytes = ReadAll(path);
  if (bytes.size() != frame.bytes || Crc32(bytes.data(), bytes.size()) != frame.crc) {
    fail("has changed: its CRC does not match");
  }
  std::istringstream stream(bytes);
  const std::optional<HeaderSize> size = ReadHeaderSize(stream);
  if (!size || size->width != static_cast<std::uint64_t>(frame.size.width) ||
      size->height != static_cast<std::uint64_t>(frame.size.height)) {
    fail("has not the size that the log tells");
  }
  std::string why;
  const cv::Mat buffer(1, static_cast<int>(bytes.size()), CV_8UC1, const_cast<char*>(bytes.data()));
  cv::Mat picture = GuardedDecode([&] { return cv::imdecode(buffer, cv::IMREAD_UNCHANGED); },
                                  "it is damaged", why);
  if (picture.empty()) fail("cannot be used: " + why);
  return picture;
}

}  // namespace jqhost
