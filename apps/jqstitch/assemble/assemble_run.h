#ifndef JQSTITCH_ASSEMBLE_ASSEMBLE_RUN_H
#define JQSTITCH_ASSEMBLE_ASSEMBLE_RUN_H

#include <string>
#include <vector>

#include "assemble/assemble_options.h"
#include "console/interrupt.h"
#include "host/assemble/assembly_session.h"
#include "run/recorder.h"

namespace jqstitch {

/// Puts a set of frames together: collects the files, has them read, compared and painted,
/// and delivers the result.
class AssembleRun {
 public:
  AssembleRun(const AssembleOptions& options, Console& console);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  std::vector<std::string> CollectFiles(const std::vector<std::string>& outputs);
  jqhost::AssemblyHints MakeHints(const std::vector<jqhost::PictureId>& pictures) const;
  jqhost::FrameSetSettings MakeSettings() const;
  void ShowProgress(const std::string& what, std::size_t done, std::size_t total);
  int Refuse(jqhost::AssemblySession& session);
  int Deliver(jqhost::AssemblySession& session, const InterruptGuard& guard);
  void SaveOtherIslands(jqhost::AssemblySession& session, const jqhost::StopToken& stop);

  const AssembleOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  jqhost::FramePreparation m_preparation;
  std::vector<std::string> m_files;
  std::string m_doing;  // what the progress bar counts
  std::size_t m_total = 0;
};

}  // namespace jqstitch

#endif  // JQSTITCH_ASSEMBLE_ASSEMBLE_RUN_H
