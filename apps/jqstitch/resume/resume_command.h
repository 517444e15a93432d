#ifndef JQSTITCH_RESUME_RESUME_COMMAND_H
#define JQSTITCH_RESUME_RESUME_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch resume` to the program. Parsing the command line runs it and stores how
/// it ended in `exitCode`, which must outlive the parsing.
void AddResumeCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_RESUME_RESUME_COMMAND_H
