#ifndef JQSTITCH_BATCH_BATCH_COMMAND_H
#define JQSTITCH_BATCH_BATCH_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch batch` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddBatchCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_BATCH_BATCH_COMMAND_H
