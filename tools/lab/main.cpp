#include "lab/Arguments.h"
#include "lab/MenubarCommand.h"
#include "lab/PageCommand.h"
#include "lab/ReplayCommand.h"
#include "lab/ReportCommand.h"
#include "lab/SeedCommand.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Command {
    std::string_view name;
    std::string_view purpose;
    int (*run)(const std::vector<std::string>& arguments);
};

constexpr std::array kCommands = {
    Command{"page", "shows a page of the dashboard", &quillbrook::lab::pageCommand},
    Command{"replay", "drives the engine through a script", &quillbrook::lab::replayCommand},
    Command{"menubar", "reads the menu bar's figures once", &quillbrook::lab::menubarCommand},
    Command{"report", "reads what a page shows", &quillbrook::lab::reportCommand},
    Command{"seed", "fills a store with history", &quillbrook::lab::seedCommand},
};

void printCommands()
{
    std::printf("usage: quillbrook-lab COMMAND ...\n\n");
    for (const Command& command : kCommands) {
        std::printf("  %-8s %s\n", command.name.data(), command.purpose.data());
    }
    std::printf("\nquillbrook-lab COMMAND --help explains a command.\n");
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments(values + 1, values + count);
    if (arguments.empty()) {
        quillbrook::lab::usageError("arguments", 1, "a command is missing");
    }
    if (arguments.front() == "--help") {
        printCommands();
        return 0;
    }
    for (const Command& command : kCommands) {
        if (arguments.front() == command.name) {
            return command.run({arguments.begin() + 1, arguments.end()});
        }
    }
    quillbrook::lab::usageError("arguments", 1, "unknown command '" + arguments.front() + "'");
}
