#ifndef JQSTITCH_LIVE_LIVE_COMMAND_H
#define JQSTITCH_LIVE_LIVE_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch live` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddLiveCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_COMMAND_H
