#ifndef JQHOST_JOURNAL_JOURNAL_FOLDER_H
#define JQHOST_JOURNAL_JOURNAL_FOLDER_H

#include <string>

#include "host/journal/journal_header.h"
#include "host/system/append_file.h"

namespace jqhost {

/// The folder of a journal, held against other processes while this exists.
///
///   header.txt          one line, written once
///   log.txt             one line for each entry, only ever longer
///   frames/000001.png   a file for each placed frame
class JournalFolder {
 public:
  enum class Use { kRead, kWrite };

  /// Opens a folder that holds a journal. Several may read at once; who writes is alone.
  /// Raises `InputError`.
  JournalFolder(const std::string& path, Use use);
  /// Makes a new journal in a folder that is empty or not there yet, for writing. Raises
  /// `InputError`.
  JournalFolder(const std::string& path, const JournalHeader& header);

  const std::string& Path() const { return m_path; }
  std::string LogPath() const { return m_path + "/log.txt"; }
  std::string FramesPath() const { return m_path + "/frames"; }
  /// @param number from 1
  std::string FramePath(int number) const { return FramesPath() + "/" + FrameName(number); }
  const JournalHeader& Header() const { return m_header; }

 private:
  static std::string FrameName(int number);
  std::string HeaderPath() const { return m_path + "/header.txt"; }
  void Lock(Use use);

  std::string m_path;
  JournalHeader m_header;
  FileLock m_lock;
};

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_FOLDER_H
