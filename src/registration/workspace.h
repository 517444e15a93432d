#ifndef JQ_REGISTRATION_WORKSPACE_H
#define JQ_REGISTRATION_WORKSPACE_H

namespace jqstitching {

/// Scratch memory of one engine, reused from frame to frame.
struct Workspace {};

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_WORKSPACE_H
