#include "lab/Arguments.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace quillbrook::lab {

void usageError(std::string_view file, std::size_t line, std::string_view what)
{
    const std::string text = "quillbrook-lab: " + std::string(file) + ":" + std::to_string(line)
        + ": " + std::string(what) + "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::exit(2);
}

Arguments::Arguments(const Syntax& syntax, const std::vector<std::string>& texts)
{
    for (const std::string& text : texts) {
        if (text == "--help") {
            std::fwrite(syntax.usage.data(), 1, syntax.usage.size(), stdout);
            std::exit(0);
        }
    }
    // The command's own name is argument 1.
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string& text = texts[i];
        if (syntax.flags.contains(text)) {
            flags.insert(text);
        } else if (syntax.options.contains(text)) {
            if (i + 1 == texts.size()) {
                usageError("arguments", i + 2, "no value for '" + text + "'");
            }
            if (!options.emplace(text, texts[++i]).second) {
                usageError("arguments", i + 1, "'" + text + "' stands twice");
            }
            valuePlaces.emplace(text, i + 2);
        } else if (text.starts_with("--")) {
            usageError("arguments", i + 2, "unknown option '" + text + "'");
        } else if (positionals.size() == syntax.positionals) {
            usageError("arguments", i + 2, "unexpected '" + text + "'");
        } else {
            positionals.push_back(text);
        }
    }
    if (positionals.size() < syntax.positionals) {
        usageError("arguments", texts.size() + 2, "a file is missing");
    }
    for (const std::string_view name : syntax.required) {
        if (!options.contains(name)) {
            usageError("arguments", texts.size() + 2, std::string(name) + " is missing");
        }
    }
}

std::optional<std::string> Arguments::option(std::string_view name) const
{
    const auto found = options.find(name);
    return found == options.end() ? std::nullopt : std::optional(found->second);
}

std::optional<double> Arguments::number(std::string_view name) const
{
    const auto text = option(name);
    if (!text) {
        return std::nullopt;
    }
    double value = 0;
    const auto* end = text->data() + text->size();
    const auto result = std::from_chars(text->data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) {
        reject(name, "'" + *text + "' is not a number");
    }
    return value;
}

void Arguments::reject(std::string_view name, std::string_view what) const
{
    usageError("arguments", valuePlaces.find(name)->second, what);
}

} // namespace quillbrook::lab
