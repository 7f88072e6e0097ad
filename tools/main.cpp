#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <exception>
#include <iostream>
#include <iterator>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "decoder/Version.h"
#include "tools/Commands.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/TemporaryFile.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/PrintLine.h"

namespace zlibvideo {
namespace {

/// A file that is opened takes the lowest free descriptor. Were one of the standard three free,
/// lines for people would end up in an output. What stands in for input and output cannot be read
/// or written, so that using it still is an error; for output it is nothing that an output can be.
void FillStandardDescriptors() {
  struct StandIn {
    const char* path;
    int mode;
  };
  constexpr StandIn kStandIns[] = {
      {"/dev/null", O_WRONLY}, {"/", O_RDONLY | O_DIRECTORY}, {"/dev/null", O_WRONLY}};
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    static_cast<void>(open(kStandIns[descriptor].path, kStandIns[descriptor].mode));
  }
}

constexpr const char* kDescription =
    "Decodes, makes and examines block-based lossless video compressed with zlib.";
constexpr const char* kFooter = R"(
A message file (.zvm) holds the messages of one stream in order: for each its
length as a 24-bit unsigned number, most significant byte first, then its bytes.
"-" stands for standard input or standard output.

Exit status: 0 all went well; 1 could not run (arguments, input, output);
2 some messages failed or the file is cut off, the rest was done;
3 decode --verify found a difference; 130 interrupted, 143 terminated.

"zlibvideo COMMAND --help" explains a command by example.)";

/// The library lists options that exclude one another in the order of their addresses, by which
/// help would differ from run to run.
class HelpFormatter : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string text = CLI::Formatter::make_option_opts(option);
    const std::size_t place = text.find(kExcludes);
    if (place == std::string::npos) return text;
    std::istringstream list(text.substr(place + kExcludes.size()));
    std::set<std::string> names{std::istream_iterator<std::string>(list), {}};
    return text.substr(0, place) + std::string(kExcludes) + " " + CLI::detail::join(names, " ");
  }

 private:
  static constexpr std::string_view kExcludes = "Excludes:";
};

/// "zlibvideo", with the command that was named.
std::string CalledName(const CLI::App& app) {
  std::string name = app.get_name();
  for (const CLI::App* command : app.get_subcommands()) name += " " + command->get_name();
  return name;
}

/// Help or version, whichever was asked for. Throws when standard output cannot be written.
int PrintHelp(const CLI::App& app, const CLI::ParseError& request) {
  std::ostringstream text;
  const int status = app.exit(request, text);
  OutputFile output(kStandardStreamName);
  output.Write(text.str());
  output.Commit();
  return status;
}

/// "decode, record or info", with `last` for "or".
std::string CommandNames(const CLI::App& app, const std::string& last) {
  std::string names;
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  for (std::size_t i = 0; i < commands.size(); ++i) {
    if (i > 0) names += i + 1 < commands.size() ? ", " : " " + last + " ";
    names += commands[i]->get_name();
  }
  return names;
}

/// Arguments that nothing takes, in their order, which the library's own text reverses; a command
/// that is none would be one of them.
std::string ExplainExtras(const CLI::App& app) {
  std::vector<std::string> arguments = app.remaining(true);
  // A mark before positional arguments is among them.
  const auto mark = std::find(arguments.begin(), arguments.end(), "--");
  if (mark != arguments.end()) arguments.erase(mark);
  if (app.get_subcommands().empty()) {
    const auto name = std::find_if(arguments.begin(), arguments.end(), [](const std::string& text) {
      return text.empty() || text.front() != '-';
    });
    if (name != arguments.end()) {
      return "\"" + *name + "\" is not a command; commands are " + CommandNames(app, "and");
    }
  }
  return (arguments.size() == 1 ? "unexpected argument: " : "unexpected arguments: ") +
         CLI::detail::join(arguments, " ");
}

/// The library's words but for three: of arguments that nothing takes, of an option without its
/// value, "--from: 1 required N missing", and of one that is repeated, "--from: At Most 1 required
/// but received 2".
std::string Explain(const CLI::App& app, const CLI::ParseError& error) {
  const auto code = static_cast<CLI::ExitCodes>(error.get_exit_code());
  if (code == CLI::ExitCodes::ExtrasError) return ExplainExtras(app);
  const std::string text = error.what();
  if (code != CLI::ExitCodes::ArgumentMismatch) return text;
  const std::string option = text.substr(0, text.find(':'));
  if (text.ends_with(" missing")) return option + " needs a value";
  if (text.starts_with(option + ": At Most 1 ")) return option + " is given more than once";
  return text;
}

int ReportUsage(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
    return PrintHelp(app, error);
  PrintLine(Explain(app, error));
  std::cerr << "Run \"" << CalledName(app) << " --help\" for usage.\n";
  return kExitCouldNotRun;
}

/// Parses the arguments, runs the command that they name and returns its exit status. Usage errors
/// are printed. Throws what the command throws.
int RunCommandLine(int argc, const char* const* argv) {
  CLI::App app(kDescription, "zlibvideo");
  app.footer(kFooter);
  app.formatter(std::make_shared<HelpFormatter>());
  app.set_version_flag("--version", std::string("zlibvideo ") + LibraryVersion());
  app.require_subcommand(0, 1);

  int status = kExitSuccess;
  AddDecodeCommand(app, &status);
  AddRecordCommand(app, &status);
  AddInfoCommand(app, &status);
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty())
      throw CLI::ValidationError("a command is required: " + CommandNames(app, "or"));
  } catch (const CLI::ParseError& error) {
    return ReportUsage(app, error);
  }
  return status;
}

}  // namespace
}  // namespace zlibvideo

int main(int argc, char** argv) {
  zlibvideo::FillStandardDescriptors();
  zlibvideo::InstallSignalHandlers();
  try {
    return zlibvideo::RunCommandLine(argc, argv);
  } catch (const zlibvideo::ToolError& error) {
    if (!error.IsReaderLeft()) zlibvideo::PrintLine(error.what());
    return error.Status();
  } catch (const std::bad_alloc&) {
    zlibvideo::PrintLine("not enough memory");
  } catch (const std::exception& error) {
    zlibvideo::PrintLine(error.what());
  } catch (...) {
    zlibvideo::PrintLine("ended by an unknown error");
  }
  return zlibvideo::kExitCouldNotRun;
}
