// From the description of commands to CLI11, which is included here only, as it is slow to compile.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <stdexcept>
#include <variant>

#include "tool_error.h"

namespace ttr {
namespace {

bool isPositional(const COption& option) { return option.names.front() != '-'; }

CLI::Option* declare(CLI::App& command, const COption& option, bool* value) {
  return command.add_flag(option.names, *value, option.help);
}

template <typename T>
CLI::Option* declare(CLI::App& command, const COption& option, T* value) {
  return command.add_option(option.names, *value, option.help);
}

void restrictTo(CLI::Option& /*option*/, std::monostate /*anything*/) {}

void restrictTo(CLI::Option& option, const CChoices& choices) {
  option.check(CLI::IsMember(choices));
}

template <typename T>
void restrictTo(CLI::Option& option, const CRange<T>& range) {
  option.check(CLI::Range(range.least, range.most));
}

void restrictTo(CLI::Option& option, CArgumentCheck check) {
  option.check(CLI::Validator(check, "", ""));
}

void addOption(CLI::App& command, const COption& option) {
  CLI::Option& added =
      *std::visit([&](auto* value) { return declare(command, option, value); }, option.value);
  added.required(isPositional(option));
  if (!option.type.empty()) added.type_name(option.type);
  const bool repeatable = std::holds_alternative<std::vector<std::string>*>(option.value);
  if (repeatable && !isPositional(option)) added.expected(1)->take_all();
  std::visit([&](const auto& allowed) { restrictTo(added, allowed); }, option.allowed);
  if (!option.needs.empty()) added.needs(command.get_option(option.needs));
}

void addCommand(CLI::App& app, const CCommand& command) {
  CLI::App* added = app.add_subcommand(command.name, command.summary);
  for (const COption& option : command.options) addOption(*added, option);
  added->footer(command.footer);
}

/// CLI11 can refuse such a pair itself, but not say why.
void refuseMeaningless(const CLI::App& parsed, const CCommand& command) {
  for (const COption& option : command.options) {
    const std::string& other = option.meaninglessWith;
    if (!other.empty() && parsed.count(option.names) > 0 && parsed[other]->as<bool>()) {
      throw CToolError(option.names, "has no meaning with " + other);
    }
  }
}

}  // namespace

int runCommandLine(const std::vector<CCommand>& commands, const std::string& version, int argc,
                   const char* const* argv) {
  CLI::App app("Resolves page templates as the device does.", "ttr");
  app.set_version_flag("--version", "ttr " + version);
  app.require_subcommand(1);
  app.footer("Run 'ttr COMMAND --help' for the options and examples of a command.");
  for (const CCommand& command : commands) addCommand(app, command);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const bool asked = error.get_exit_code() == 0;  // --help or --version
    if (!asked) throw std::runtime_error(error.what() + std::string(" (see ttr --help)"));
    app.exit(error);
    if (!std::cout.flush()) throw CToolError("standard output", "cannot be written");
    return 0;
  }
  const CLI::App& parsed = *app.get_subcommands().front();
  for (const CCommand& command : commands) {
    if (command.name != parsed.get_name()) continue;
    refuseMeaningless(parsed, command);
    return command.run();
  }
  return 0;  // never: a subcommand is required
}

}  // namespace ttr
