#ifndef JQSTITCH_ASSEMBLE_ASSEMBLE_COMMAND_H
#define JQSTITCH_ASSEMBLE_ASSEMBLE_COMMAND_H

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds `jqstitch assemble` to the program. Parsing the command line runs it and
/// stores how it ended in `exitCode`, which must outlive the parsing.
void AddAssembleCommand(CLI::App& program, int& exitCode);

}  // namespace jqstitch

#endif  // JQSTITCH_ASSEMBLE_ASSEMBLE_COMMAND_H
