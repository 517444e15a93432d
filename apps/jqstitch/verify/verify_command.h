#ifndef JQSTITCH_VERIFY_VERIFY_COMMAND_H
#define JQSTITCH_VERIFY_VERIFY_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch verify` to the program. Parsing the command line runs it and stores how
/// it ended in `exitCode`, which must outlive the parsing.
void AddVerifyCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_VERIFY_VERIFY_COMMAND_H
