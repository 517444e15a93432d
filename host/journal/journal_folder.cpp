#include "host/journal/journal_folder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/input_error.h"
#include "host/system/plain_file.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

// No header comes near it; a folder can hold any file of that name.
constexpr std::streamsize kLongestHeader = 1 << 24;

std::string ReadStart(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw InputError("it cannot be opened");
  std::string text(static_cast<std::size_t>(kLongestHeader), '\0');
  stream.read(text.data(), kLongestHeader);
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

[[noreturn]] void CannotWrite(const std::string& path, const std::error_code& error) {
  throw InputError("cannot write the journal '" + path + "': " + error.message());
}

}  // namespace

std::string JournalFolder::FrameName(int number) {
  char name[24];
  std::snprintf(name, sizeof name, "%06d.png", number);
  return name;
}

JournalFolder::JournalFolder(const std::string& path, Use use) : m_path(path) {
  std::error_code error;
  const FileKind kind = KindOfFile(path, error);
  const std::string refused = "cannot read the journal '" + path + "': ";
  if (kind == FileKind::kMissing) throw InputError(refused + "there is no such folder");
  if (kind == FileKind::kUnknown) throw InputError(refused + error.message());
  if (kind != FileKind::kFolder) throw InputError(refused + "it is no folder");
  const FileKind header = KindOfFile(HeaderPath(), error);
  if (header == FileKind::kUnknown) throw InputError(refused + error.message());
  if (header != FileKind::kPlain) {
    throw InputError(refused + "the folder holds none (no header.txt)");
  }
  Lock(use);
  try {
    m_header = ReadHeader(ReadStart(HeaderPath()));
  } catch (const InputError& wrong) {
    throw InputError("cannot read '" + HeaderPath() + "': " + wrong.what());
  }
}

JournalFolder::JournalFolder(const std::string& path, const JournalHeader& header)
    : m_path(path), m_header(header) {
  std::error_code error;
  const FileKind kind = KindOfFile(path, error);
  if (kind == FileKind::kUnknown) CannotWrite(path, error);
  if (kind != FileKind::kMissing && kind != FileKind::kFolder) {
    throw InputError("cannot write the journal '" + path + "': it is no folder");
  }
  if (kind == FileKind::kFolder && KindOfFile(HeaderPath(), error) == FileKind::kPlain) {
    throw InputError("'" + path +
                     "' holds a journal already; go on with jqstitch resume, or choose another "
                     "folder");
  }
  if (kind == FileKind::kFolder) {
    const bool empty = fs::is_empty(path, error);
    if (error) CannotWrite(path, error);
    if (!empty) {
      throw InputError("cannot write the journal '" + path +
                       "': the folder holds other files; choose a new or an empty one");
    }
  } else {
    fs::create_directories(path, error);
    if (error) CannotWrite(path, error);
  }
  const std::string line = HeaderLine(header);
  NewFile file;
  error = file.Create(HeaderPath());
  if (!error) error = file.Write(line.data(), line.size());
  if (!error) error = file.FlushAndClose();
  if (!error) fs::create_directory(FramesPath(), error);
  if (!error) error = FlushFile(m_path);
  if (error) CannotWrite(path, error);
  Lock(Use::kWrite);
}

void JournalFolder::Lock(Use use) {
  const std::error_code error = m_lock.Take(HeaderPath(), use == Use::kWrite);
  if (error == std::errc::device_or_resource_busy) {
    throw InputError("the journal '" + m_path +
                     "' is in use by another process; wait until that has ended");
  }
  if (error) throw InputError("cannot read '" + HeaderPath() + "': " + error.message());
}

}  // namespace jqhost
