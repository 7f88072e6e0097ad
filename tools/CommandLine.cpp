// The command line: help, usage errors, and the commands.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

#include "decoder/Version.h"
#include "tools/Commands.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/StandardError.h"

namespace zlibvideo {
namespace {

constexpr const char* kDescription =
    "Decodes, makes and examines block-based lossless video compressed with zlib.";
constexpr const char* kFooter = R"(
A message file (.zvm) holds the messages of one stream in order: for each its
length as a 24-bit unsigned number, most significant byte first, then its bytes.
"-" stands for standard input or standard output.

Exit status: 0 all went well; 1 could not run (arguments, input, output);
2 some messages failed or the file is cut off, the rest was done;
3 decode --verify found a difference; 128 + N signal N, 130 Ctrl-C.

"zlibvideo COMMAND --help" explains a command by example.)";

/// "zlibvideo", with the command of the arguments.
std::string CalledName(const CLI::App& app) {
  std::string name = app.get_name();
  for (const CLI::App* command : app.get_subcommands()) name += " " + command->get_name();
  return name;
}

/// Prints help or the version. Throws `ToolError` when standard output cannot be written.
int PrintHelp(const CLI::App& app, const CLI::ParseError& request) {
  std::ostringstream text;
  const int status = app.exit(request, text);
  OutputFile output(kStandardStreamName);
  output.Write(text.str());
  output.Commit();
  return status;
}

/// If the arguments name no command, returns the line that explains it. Else an empty string.
std::string ExplainCommand(const CLI::App& app) {
  if (!app.get_subcommands().empty()) return {};
  for (const std::string& argument : app.remaining()) {
    if (argument.starts_with('-')) continue;
    const bool isFile = std::filesystem::exists(argument);
    return "\"" + argument + "\" is not a command; commands are decode, record and info" +
           (isFile ? "; to see what is in a stream: zlibvideo info " + argument : "");
  }
  return {};
}

/// The first argument that names a file and looks like an option. Empty if no argument does.
std::string FileLikeOption(const CLI::App& app) {
  for (const std::string& argument : app.remaining(true)) {
    if (argument.starts_with('-') && std::filesystem::exists(argument)) return argument;
  }
  return {};
}

/// The text of the library, but for "--from: 1 required N missing" and for arguments that are
/// easily mistaken.
std::string Explain(const CLI::App& app, const CLI::ParseError& error) {
  const std::string command = ExplainCommand(app);
  if (!command.empty()) return command;
  const std::string text = error.what();
  if (text.ends_with(" missing")) return text.substr(0, text.find(':')) + " needs a value";
  const std::string file = FileLikeOption(app);
  return file.empty() ? text : text + "; for the file " + file + " write ./" + file;
}

int ReportUsage(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
    return PrintHelp(app, error);
  PrintLine(Explain(app, error));
  std::cerr << "Run \"" << CalledName(app) << " --help\" for usage.\n";
  return kExitCouldNotRun;
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
  CLI::App app(kDescription, "zlibvideo");
  app.footer(kFooter);
  app.set_version_flag("--version", std::string("zlibvideo ") + LibraryVersion());
  app.require_subcommand(0, 1);

  int status = kExitSuccess;
  AddDecodeCommand(app, &status);
  AddRecordCommand(app, &status);
  AddInfoCommand(app, &status);
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty())
      throw CLI::ValidationError("a command is required: decode, record or info");
  } catch (const CLI::ParseError& error) {
    return ReportUsage(app, error);
  }
  return status;
}

}  // namespace zlibvideo
