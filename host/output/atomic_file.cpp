#include "host/output/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "host/input_error.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

std::string Advice(std::error_code cause) {
  if (cause == std::errc::no_such_file_or_directory) {
    return " (the folder is not there; make it first)";
  }
  if (cause == std::errc::not_a_directory) {
    return " (a part of the path is a file, not a folder)";
  }
  if (cause == std::errc::no_space_on_device || cause.value() == EDQUOT) {
    return " (free some space, or choose another disk)";
  }
  if (cause == std::errc::permission_denied || cause == std::errc::operation_not_permitted ||
      cause == std::errc::read_only_file_system) {
    return " (choose a folder that you may write to)";
  }
  if (cause == std::errc::filename_too_long) return " (choose a shorter name)";
  return std::string();
}

// Where a link leads, also when nothing is there yet.
std::string Resolve(const std::string& path) {
  std::error_code error;
  fs::path target(path);
  for (int hops = 0; hops < 40 && fs::is_symlink(target, error); ++hops) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return target.string();
}

// The name beside an already resolved path.
std::string NameBeside(const std::string& target, int number) {
  std::string extension = fs::path(target).extension().string();
  if (extension.size() > 16) extension.clear();
  fs::path folder = fs::path(target).parent_path();
  if (folder.empty()) folder = ".";
  return (folder / (".jqstitch-" + std::to_string(ProcessNumber()) + "-" + std::to_string(number) +
                    ".tmp" + extension))
      .string();
}

// A folder of tiles is left behind like a file.
void RemoveWhatever(const std::string& path) {
  std::error_code error;
  if (fs::is_directory(fs::symlink_status(path, error))) {
    fs::remove_all(path, error);
  } else {
    RemoveFile(path);
  }
}

}  // namespace

std::string WriteFailure(const std::string& path, std::error_code cause) {
  return "cannot write '" + path + "': " + cause.message() + Advice(cause);
}

void AtomicFile::Fail(std::error_code cause) const {
  throw InputError(WriteFailure(m_shown, cause));
}

AtomicFile::AtomicFile(const std::string& path) : m_shown(path), m_target(Resolve(path)) {
  const std::string name = fs::path(m_target).filename().string();
  if (path.empty() || name.empty() || name == "." || name == "..") {
    throw InputError("cannot write '" + m_shown + "': it names no file");
  }
  std::error_code error;
  const FileKind kind = KindOfFile(m_target, error);
  if (kind == FileKind::kUnknown) Fail(error);
  if (kind == FileKind::kFolder) {
    throw InputError("cannot write '" + m_shown + "': it is a folder (add a file name)");
  }
  // A rename would put a plain file in the place of the pipe or device.
  if (kind != FileKind::kMissing && kind != FileKind::kPlain) {
    throw InputError("cannot write '" + m_shown + "': it is not a plain file");
  }
  if (name.size() > LongestFileName()) Fail(std::make_error_code(std::errc::filename_too_long));

  for (int number = 1;; ++number) {
    const std::string temporary = NameBeside(m_target, number);
    error = m_file.Create(temporary);
    if (!error) {
      m_temporary = temporary;
      break;
    }
    if (error != std::errc::file_exists || number == kMostTemporaries) Fail(error);
  }
  if (kind == FileKind::kPlain) m_file.CopyRights(m_target);
}

AtomicFile::~AtomicFile() {
  if (!m_temporary.empty()) RemoveFile(m_temporary);
}

void AtomicFile::Write(const void* bytes, std::size_t size) {
  if (const std::error_code error = m_file.Write(bytes, size)) Fail(error);
}

void AtomicFile::Commit() {
  if (const std::error_code error = m_file.FlushAndClose()) Fail(error);
  if (const std::error_code error = ReplaceFile(m_temporary, m_target)) Fail(error);
  m_temporary.clear();
}

void CheckWritable(const std::string& path) {
  AtomicFile probe(path);
}

void WriteFileAtomically(const std::string& path, const void* bytes, std::size_t size) {
  AtomicFile file(path);
  file.Write(bytes, size);
  file.Commit();
}

void RemoveAbandonedTemporaries(const std::string& path) {
  fs::path folder = fs::path(Resolve(path)).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code error;
  std::vector<std::string> abandoned;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    long long process = 0;
    int number = 0, length = 0;
    const std::string name = entry->path().filename().string();
    const int read =
        std::sscanf(name.c_str(), ".jqstitch-%lld-%d.tmp%n", &process, &number, &length);
    const bool isOurs = read == 2 && length > 0;
    if (isOurs && !IsProcessRunning(process)) abandoned.push_back(entry->path().string());
  }
  for (const std::string& left : abandoned) RemoveWhatever(left);
}

std::string TemporaryName(const std::string& path, int number) {
  return NameBeside(Resolve(path), number);
}

}  // namespace jqhost
