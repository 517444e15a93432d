#ifndef JQHOST_ASSEMBLE_WORK_POOL_H
#define JQHOST_ASSEMBLE_WORK_POOL_H

#include <cstddef>
#include <functional>

#include "host/run/stop_token.h"

namespace jqhost {

/// Does `count` independent pieces of work on several threads, the calling one among them,
/// and returns when all have ended. Each piece is begun in its order by whichever thread is
/// free, so a task that writes to a place of its own gives the same with any number of
/// threads.
///
/// A piece that raises ends the work: no other is begun, and the exception reaches the
/// caller.
/// @param threads at least 1; fewer work where the system gives no more
/// @param task gets the number of its thread, from 0, and that of the piece
/// @param progress hears on the calling thread how many pieces are done
/// @return whether all were begun; false after a requested stop
bool ShareWork(int threads, std::size_t count, const StopToken& stop,
               const std::function<void(int thread, std::size_t piece)>& task,
               const std::function<void(std::size_t done)>& progress);

/// The number of threads asked for, or one for each core where it is 0.
int ThreadsFor(int asked);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_WORK_POOL_H
