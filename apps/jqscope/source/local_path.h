#ifndef JQSCOPE_SOURCE_LOCAL_PATH_H
#define JQSCOPE_SOURCE_LOCAL_PATH_H

#include <QString>
#include <string>

namespace jqscope {

/// A path as the system takes it.
inline std::string ToLocalPath(const QString& text) {
  return text.toLocal8Bit().toStdString();
}

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_LOCAL_PATH_H
