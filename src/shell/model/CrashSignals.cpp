#include "shell/model/CrashSignals.h"

#include "base/Text.h"

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

namespace quillbrook {

namespace {

constexpr std::array kSignals = {SIGBUS, SIGSEGV, SIGABRT, SIGILL, SIGFPE, SIGTRAP};

/// A fault inside the handler enters it again. The second time may still tell something; a third
/// could only go on so until the stack is full.
constexpr int kMostBlocks = 2;

CrashTrace installedTrace;
volatile std::sig_atomic_t logDescriptor = -1;
thread_local int blocksBegun = 0;

void put(std::string_view text)
{
    // Nothing can be done about a failure here.
    [[maybe_unused]] const auto written = write(logDescriptor, text.data(), text.size());
}

void putInt(std::int64_t value)
{
    std::array<char, 32> digits{};
    put({digits.data(), writeInt(value, digits)});
}

void putSignalLine(int signal)
{
    switch (signal) {
    case SIGILL:
        return put("\n💥 崩溃信号: SIGILL (非法指令)\n");
    case SIGTRAP:
        return put("\n💥 崩溃信号: SIGTRAP (调试陷阱)\n");
    case SIGABRT:
        return put("\n💥 崩溃信号: SIGABRT (异常终止)\n");
    case SIGFPE:
        return put("\n💥 崩溃信号: SIGFPE (浮点异常)\n");
    case SIGBUS:
        return put("\n💥 崩溃信号: SIGBUS (总线错误 — 可能 App Translocation)\n");
    case SIGSEGV:
        return put("\n💥 崩溃信号: SIGSEGV (段错误)\n");
    default:
        put("\n💥 崩溃信号: SIGNAL ");
        putInt(signal);
        return put("\n");
    }
}

void putLastPage()
{
    std::array<char, kHeartbeatCapacity> buffer{};
    put("最后页面: ");
    put(readHeartbeat(installedTrace.heartbeatPath, buffer));
    put("\n\n");
}

void putStack()
{
    std::array<void*, 128> addresses{};
    put("堆栈跟踪:\n");
    const int count = backtrace(addresses.data(), static_cast<int>(addresses.size()));
    backtrace_symbols_fd(addresses.data(), count, logDescriptor);
}

void putBlock(int signal)
{
    putSignalLine(signal);
    put("\n崩溃时间: ");
    putInt(std::time(nullptr));
    put(" (Unix秒)\nPID: ");
    putInt(getpid());
    put("\n\n");
    put(installedTrace.header);
    putLastPage();
    putStack();
    put("\n=== 崩溃日志结束 ===\n\n");
}

void dieOf(int signal)
{
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
    raise(signal);
}

void handleSignal(int signal, siginfo_t*, void*)
{
    if (logDescriptor >= 0 && blocksBegun < kMostBlocks) {
        ++blocksBegun;
        putBlock(signal);
    }
    dieOf(signal);
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    const auto begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

} // namespace

void installSignalHandlers(const CrashTrace& trace)
{
    // The first call may load the unwinder, which a handler must not.
    std::array<void*, 1> address{};
    backtrace(address.data(), static_cast<int>(address.size()));

    installedTrace = trace;
    logDescriptor = trace.logDescriptor;
    struct sigaction action {};
    action.sa_sigaction = handleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    for (const int signal : kSignals) {
        sigaction(signal, &action, nullptr);
    }
}

void closeCrashTrace()
{
    logDescriptor = -1;
}

std::string_view readHeartbeat(const char* path, std::span<char> buffer)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return kUnknownHeartbeat;
    }
    const auto length = read(file, buffer.data(), buffer.size());
    close(file);
    if (length < 0) {
        return kUnknownHeartbeat;
    }
    const std::string_view text(buffer.data(), static_cast<std::size_t>(length));
    return isValidUtf8(text) ? trimmed(text) : kUnknownHeartbeat;
}

std::size_t writeInt(std::int64_t value, std::span<char> buffer)
{
    if (buffer.size() < 2 || value < 0) {
        return 0;
    }
    std::size_t begin = buffer.size() - 1;
    buffer[begin] = '\0';
    do {
        buffer[--begin] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0 && begin > 0);
    std::ranges::copy(buffer.subspan(begin), buffer.begin());
    return buffer.size() - 1 - begin;
}

} // namespace quillbrook
