#include "report/batch_section.h"

#include <QMetaObject>
#include <QObject>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <mutex>
#include <opencv2/imgcodecs.hpp>
#include <stdexcept>
#include <thread>

#include "jqimagestitching.h"
#include "report/read_hook.h"
#include "report/same.h"
#include "report/stopwatch.h"
#include "support/scene.h"

namespace jqbench {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kSeed = 20240505;

/// Lets two threads run strictly by turns; one that has finished passes for ever.
class Turns {
 public:
  void waitFor(int who) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [&] { return m_turn == who || m_finished[1 - who]; });
  }
  void pass(int who) {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_turn = 1 - who;
    }
    m_changed.notify_all();
  }
  void finish(int who) {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_finished[who] = true;
    }
    pass(who);
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_turn = 0;
  bool m_finished[2] = {false, false};
};

/// One of the two runs: times its files and hands over before each of them.
class Contestant : public ReadHook {
 public:
  Contestant(Turns& turns, int who) : m_turns(turns), m_who(who) {}

  /// Whether the size check is over; the plain twin decodes files for it.
  std::function<bool()> started = [] { return true; };

  /// Called when both have finished as many files.
  std::function<void()> onBothDone;

  void beforeRead() override {
    if (!started()) return;
    ++m_reads;
    if (m_working) work.push_back(NowMs() - m_start);
    m_turns.pass(m_who);
    m_turns.waitFor(m_who);
    if (m_working && onBothDone) onBothDone();
    m_start = NowMs();
  }
  void afterRead() override {
    if (m_reads == 0) return;
    decoding.push_back(NowMs() - m_start);
    m_working = true;
    m_start = NowMs();
  }

  std::vector<double> work, decoding;
  int reads() const { return m_reads; }

 private:
  Turns& m_turns;
  int m_who;
  int m_reads = 0;
  bool m_working = false;
  double m_start = 0;
};

/// Picture files in a folder of their own, removed with it.
class Files {
 public:
  Files(cv::Size frame, int count) {
    std::string pattern = (fs::temp_directory_path() / "jqbench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no temporary folder: " + pattern);
    }
    m_folder = pattern;
    const Scene scene(Subject::kTissue, frame, kSeed);
    const std::vector<cv::Point> path = WalkLoop(frame, count);
    for (int i = 0; i < count; ++i) {
      paths.push_back((m_folder / cv::format("%03d.bmp", i)).string());
      cv::imwrite(paths.back(), scene.frame(i, path[static_cast<size_t>(i)]));
    }
  }
  ~Files() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
  }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;

  std::vector<std::string> paths;

 private:
  fs::path m_folder;
};

}  // namespace

BatchResult RunBatch(cv::Size frame, int count) {
  const Files files(frame, count);
  BatchResult result;
  result.files = count;

  JQImageStitching library;
  reference::Stitcher plain;
  plain.m_fileList = files.paths;
  for (const std::string& path : files.paths) library.m_fileList << QString::fromStdString(path);
  cv::Mat finished;
  QObject::connect(&library, &JQImageStitching::sglMultiImageProcessFinished, [&](void* picture) {
    if (picture != nullptr) finished = static_cast<cv::Mat*>(picture)->clone();
  });

  bool placed = false;
  QObject::connect(&library, &JQImageStitching::sglMultiImageProcessStatus,
                   [&](const QString&) { placed = library.IsLastFrameAccepted(); });

  Turns turns;
  Contestant first(turns, 0), second(turns, 1);
  second.started = [&] { return plain.m_fMaxOverlap != 0; };
  std::vector<FrameKind> kinds;
  cv::Size before;
  bool newReference = false;
  // The library's turn begins when the twin has done the same file.
  first.onBothDone = [&] {
    const bool mosaicExists = !library.GetMosaic().empty();
    const bool grown = mosaicExists && library.GetMosaic().size() != before;
    kinds.push_back(placed ? (grown ? FrameKind::kPlacedGrown : FrameKind::kPlaced)
                           : (newReference ? FrameKind::kNotPlacedFirst : FrameKind::kNotPlaced));
    newReference = placed;
    before = library.GetMosaic().size();
    ++result.equality.frames;
    result.equality.equal += SameRun(library, placed, plain) ? 1 : 0;
  };

  std::exception_ptr failure;
  std::thread other([&] {
    SetReadHook(&second);
    turns.waitFor(1);
    try {
      plain.slotStartStitching();
    } catch (...) {
      failure = std::current_exception();
    }
    turns.finish(1);
  });
  SetReadHook(&first);
  QMetaObject::invokeMethod(&library, "slotStartStitching", Qt::DirectConnection);
  SetReadHook(nullptr);
  turns.finish(0);
  other.join();
  if (failure) std::rethrow_exception(failure);

  ++result.equality.frames;
  const bool same = !plain.m_finishedPicture.empty() &&
                    SamePixels(finished, plain.m_finishedPicture.back()) && SameRun(library, plain);
  result.equality.equal += same ? 1 : 0;

  // The first file only starts the run, the second one makes the mosaic.
  const size_t measured = std::min({kinds.size(), first.work.size(), second.work.size()});
  for (size_t i = 2; i < measured; ++i) {
    result.times[static_cast<size_t>(kinds[i])].add(first.work[i], second.work[i]);
  }
  result.decodingMs = first.decoding;
  result.libraryReads = first.reads();
  return result;
}

}  // namespace jqbench
