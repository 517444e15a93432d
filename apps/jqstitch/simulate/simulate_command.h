#ifndef JQSTITCH_SIMULATE_SIMULATE_COMMAND_H
#define JQSTITCH_SIMULATE_SIMULATE_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch simulate` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddSimulateCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_SIMULATE_SIMULATE_COMMAND_H
