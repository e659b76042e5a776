#ifndef TOOL_COMMAND_H
#define TOOL_COMMAND_H

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace ttr {

/// Gives the reason why the text of an option cannot be taken, or "" when it can.
using CArgumentCheck = std::string (*)(const std::string& text);

/// The texts that an option may have.
using CChoices = std::vector<std::string>;

/// The numbers that an option may have.
template <typename T>
struct CRange {
  T least;
  T most;
};

/// An argument of a command: an option, or, with a name without hyphens, one that must be there and
/// is known by its position.
struct COption {
  std::string names;  ///< "-o,--output", "PAGE"

  /// Where its value goes; it must live as long as the command. A bool makes it an option without
  /// value, a vector one that may be repeated. A std::size_t is an unsigned or an unsigned long.
  std::variant<std::string*, std::optional<std::string>*, std::vector<std::string>*, bool*, int*,
               unsigned*, std::optional<unsigned>*, unsigned long*>
      value;

  std::string help;
  std::string type{};  ///< what the help calls its value; "" for the usual word

  /// Which values it takes; any that fit its type without.
  std::variant<std::monostate, CChoices, CRange<int>, CRange<unsigned>, CArgumentCheck> allowed{};

  std::string needs{};            ///< the option that has to be there, too
  std::string meaninglessWith{};  ///< the flag that leaves it without meaning
};

/// A command as `ttr` shows and runs it.
struct CCommand {
  std::string name;
  std::string summary;
  std::string footer;
  std::function<int()> run;  ///< gives the exit code; the options have their values by then
  std::vector<COption> options{};

  /// Adds options behind those that are there.
  void Add(const std::vector<COption>& more) {
    options.insert(options.end(), more.begin(), more.end());
  }
};

}  // namespace ttr

#endif  // TOOL_COMMAND_H
