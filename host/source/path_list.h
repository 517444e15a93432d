#ifndef JQHOST_SOURCE_PATH_LIST_H
#define JQHOST_SOURCE_PATH_LIST_H

#include <string>
#include <vector>

namespace jqhost {

/// Sorts by file name as people count: 2 before 10, case and digits weighed by
/// English rules whatever the locale. Names that compare equal keep byte order.
void SortNaturally(std::vector<std::string>& paths);

/// The pictures of a folder by their extension, in natural order; not those in
/// its subfolders, hidden ones, nor the ones in `leftOut` (pictures that the run
/// itself writes, left there by an earlier run). Raises `InputError` when there is
/// none, and when one of `leftOut` has the size of the others: it is a frame then,
/// and would be overwritten.
std::vector<std::string> ListPictures(const std::string& folder,
                                      const std::vector<std::string>& leftOut);

/// The same for a folder that may still be empty, or hold frames of any name.
std::vector<std::string> FindPictures(const std::string& folder,
                                      const std::vector<std::string>& leftOut);

/// One path a line; empty lines are skipped. "-" is standard input. Raises
/// `InputError`.
std::vector<std::string> ReadPathList(const std::string& file);

/// Folders replaced by their pictures, everything else as given.
std::vector<std::string> ExpandFolders(const std::vector<std::string>& paths,
                                       const std::vector<std::string>& leftOut);

/// Whether the order looks like a shell's wildcard: sorted by bytes, although
/// counting would sort otherwise (frame10 before frame2).
bool LooksSortedByBytes(const std::vector<std::string>& paths);

/// Whether both paths name one existing file.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_PATH_LIST_H
