#ifndef JQ_PICTURE_PAGE_MEMORY_H
#define JQ_PICTURE_PAGE_MEMORY_H

#include <cstddef>

namespace jqstitching {

/// Memory that the system can make longer or shorter without copying it. Sizes are in
/// bytes, more than 0, and the caller keeps them: the size of a block is the one it was
/// last given. One file for each kind of system holds these functions.

/// A new block, all 0; null where the memory cannot be had.
void* TakePages(std::size_t bytes);

/// Makes a block longer or shorter. Returns where it lies now, which may be another place;
/// what was added is 0, and nothing of it is touched where the system hands out zeroed
/// pages. Returns null where the memory cannot be had: the block is as before then. To
/// make a block shorter always succeeds.
void* ResizePages(void* block, std::size_t from, std::size_t to);

/// Says that these bytes of a block are about to be written, so that the system can hand
/// out their pages at one go instead of one by one. A hint: nothing changes.
void ExpectWrites(void* from, std::size_t bytes);

void ReturnPages(void* block, std::size_t bytes);

}  // namespace jqstitching

#endif  // JQ_PICTURE_PAGE_MEMORY_H
