#ifndef JQ_PICTURE_REFLECT_H
#define JQ_PICTURE_REFLECT_H

namespace jqstitching {

/// Index of the sample that stands for one outside [0, size): reflection without
/// repeating the edge. A single sample reflects onto itself.
inline int Reflect(int i, int size) {
  if (size == 1) return 0;
  while (i < 0 || i >= size) i = i < 0 ? -i : 2 * size - 2 - i;
  return i;
}

}  // namespace jqstitching

#endif  // JQ_PICTURE_REFLECT_H
