#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook::lab {

/// Prints "quillbrook-lab: {file}:{line}: {what}" to standard error and ends the program with
/// status 2. For the command line, the file is "arguments" and the line the argument's number.
[[noreturn]] void usageError(std::string_view file, std::size_t line, std::string_view what);

/// What a command accepts behind its name.
struct Syntax {
    std::string_view usage; ///< printed for --help
    std::set<std::string_view> options{}; ///< those that take a value, with their dashes
    std::set<std::string_view> flags{}; ///< those that take none
    std::set<std::string_view> required{}; ///< those of `options` that may not be missing
    std::size_t positionals = 0; ///< how many values without an option are needed
};

/// The arguments of a command, checked against its syntax.
class Arguments {
public:
    /// Ends the program when an argument is unknown, repeated or missing, and after printing the
    /// usage when --help is among them.
    Arguments(const Syntax& syntax, const std::vector<std::string>& texts);

    /// The value of an option; empty when it was not given.
    std::optional<std::string> option(std::string_view name) const;
    /// The value of a required option.
    const std::string& required(std::string_view name) const { return options.find(name)->second; }
    bool flag(std::string_view name) const { return flags.contains(name); }
    const std::string& positional(std::size_t index) const { return positionals[index]; }

    /// The number that an option gives; empty when it was not given. Ends the program when its
    /// value is not a finite number.
    std::optional<double> number(std::string_view name) const;

    /// Ends the program with a usage error at the value of an option that was given.
    [[noreturn]] void reject(std::string_view name, std::string_view what) const;

private:
    std::map<std::string, std::string, std::less<>> options{};
    std::map<std::string, std::size_t, std::less<>> valuePlaces{};
    std::set<std::string, std::less<>> flags{};
    std::vector<std::string> positionals{};
};

} // namespace quillbrook::lab
