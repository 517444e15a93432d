#ifndef JQSTITCH_INSPECT_INSPECT_COMMAND_H
#define JQSTITCH_INSPECT_INSPECT_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch inspect` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddInspectCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_INSPECT_COMMAND_H
