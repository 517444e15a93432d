#ifndef JQHOST_ASSEMBLE_ASSEMBLY_SESSION_H
#define JQHOST_ASSEMBLE_ASSEMBLY_SESSION_H

#include <functional>
#include <string>
#include <vector>

#include "host/assemble/assembly.h"
#include "host/assemble/frame_set.h"
#include "host/assemble/hints.h"
#include "host/assemble/link.h"
#include "host/output/picture.h"
#include "host/record/run_record.h"

namespace jqhost {

/// Puts a set of frames together that came in any order: reads them, compares them in pairs,
/// decides which pairs can be trusted, places the frames and paints them.
///
/// Everything but numbers and tie rules that are stated where they apply is independent of
/// the order of the frames: inside, they are taken in an order that their pixels decide.
class AssemblySession {
 public:
  /// What is being done and how much of it; called on the thread of the session.
  /// @param total 0 when it has not begun
  using Progress =
      std::function<void(const std::string& what, std::size_t done, std::size_t total)>;

  /// `stop` must outlive the session. The preparation is copied when frames are read again.
  /// @param hints those by frame have one entry for each picture
  AssemblySession(const std::vector<PictureId>& pictures, const FrameSetSettings& settings,
                  AssemblyHints hints, const StopToken& stop, Progress progress);

  /// Reads the frames. Those that cannot be read, or are of another size than most (of
  /// equally many the size that comes first), are left out with `skipBad`.
  /// @return whether there is anything to assemble
  bool Read(FramePreparation& preparation, bool skipBad);

  /// Compares pairs and places the frames. A requested stop ends the comparing; what is
  /// known by then is used.
  void Assemble();

  const Assembly& Result() const { return m_assembly; }
  /// One for each picture: those of the first island are placed.
  const std::vector<FrameResult>& Results() const { return m_results; }
  /// Gives the frames that were never looked at their cause.
  void CloseResults(const std::string& whyNotReached);

  /// The picture of an island, by its index. The frames are read again; those that cannot
  /// be any more are told as unreadable and left out. A stop that is requested while it is
  /// painted ends it early.
  Picture Paint(std::size_t island, const FramePreparation& preparation);
  /// Sizes of the frames and where the first one lies in the picture of the first island.
  void Describe(RunRecord& record) const;

 private:
  void FindUnusable();
  void SortByPixels();
  Link MakeLink(const FramePair& pair) const;
  PairExpectation Expect(std::size_t first, std::size_t second) const;
  void TellResults();
  cv::Mat ReadAgain(std::size_t frame, FramePreparation& preparation);

  const FrameSetSettings m_settings;
  const AssemblyHints m_hints;
  const StopToken& m_stop;
  const Progress m_progress;

  std::vector<SetFrame> m_frames;     // as given
  std::vector<std::size_t> m_usable;  // of these, in the order of their pixels
  cv::Size m_size, m_workingSize;     // of a frame
  Assembly m_assembly;
  std::vector<FrameResult> m_results;
};

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_ASSEMBLY_SESSION_H
