// A program that installs the crash reporter and then dies as its arguments say:
//   crashing_program DATA-DIRECTORY CAUSE [thread] [clean]
// CAUSE is a signal's number, or "null", "wild", "exception", "nothing" or "return". With "thread"
// another thread dies of it, with "clean" a clean exit was recorded before.

#include "platform/virtual/VirtualMachine.h"
#include "shell/model/CrashReporter.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Without the sanitizers, which would end the program before the fault does.
[[gnu::no_sanitize("address", "undefined")]] void die(const std::string& cause)
{
    if (cause == "return") {
        return;
    }
    if (cause == "exception") {
        throw std::runtime_error("the disk is full");
    }
    if (cause == "nothing") {
        throw 42; // says nothing of itself
    }
    if (cause == "null") {
        volatile int* nowhere = nullptr;
        *nowhere = 1;
    }
    if (cause == "wild") {
        // There is no code: walking the stack from here faults once more.
        volatile std::uintptr_t address = 0x1000;
        reinterpret_cast<void (*)()>(address)();
    }
    raise(std::stoi(cause));
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments(values + 1, values + count);
    const auto says = [&arguments](const char* word) {
        return std::ranges::find(arguments, word) != arguments.end();
    };
    quillbrook::VirtualMachine machine(arguments.at(0), 1772328612.345);
    machine.workspace.setProcessIdentifier(getpid());
    machine.bundleValues.set("CFBundleShortVersionString", "1.2.3");
    machine.bundleValues.set("CFBundleVersion", "45");
    quillbrook::CrashReporter reporter(machine.platform());
    reporter.install();
    reporter.updateHeartbeat("Today");
    if (says("clean")) {
        reporter.markCleanExit();
    }
    const std::string& cause = arguments.at(1);
    if (says("thread")) {
        std::thread(die, cause).join();
    } else {
        die(cause);
    }
    return EXIT_SUCCESS;
}
