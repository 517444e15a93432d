#ifndef JQSTITCH_FLAT_FLAT_COMMAND_H
#define JQSTITCH_FLAT_FLAT_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch flat` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddFlatCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_FLAT_FLAT_COMMAND_H
