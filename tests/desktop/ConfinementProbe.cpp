// Loaded before a program: at SIGUSR1 the program itself tries what it must not be able to do, on
// the thread that gets the signal, on one that is older than `main`, on a new one, in a child, and
// in another program that it starts. Each outcome is one line in the file of the environment's
// CONFINEMENT_REPORT: who, what, and the name of the failure or "done". The file that each tries to
// make is that of CONFINEMENT_FILE.

#include <fcntl.h>
#include <pthread.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int report = -1;
int wakeOld = -1;
const char* foreignFile = nullptr;

void tell(const char* who, const char* what, bool isDone)
{
    const char* const outcome = isDone ? "done" : strerrorname_np(errno);
    dprintf(report, "%s %s %s\n", who, what, outcome);
}

void trySocket(const char* who, const char* what, int family)
{
    const int made = socket(family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    tell(who, what, made >= 0);
    close(made);
}

void tryAll(const char* who)
{
    trySocket(who, "inet", AF_INET);
    trySocket(who, "inet6", AF_INET6);
    trySocket(who, "netlink", AF_NETLINK);
    trySocket(who, "local", AF_UNIX);
    const int file = open(foreignFile, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    tell(who, "file", file >= 0);
    close(file);
}

void* tryWhenWoken(void* end)
{
    char ignored = 0;
    while (read(*static_cast<int*>(end), &ignored, 1) == 1) {
        tryAll("old-thread");
    }
    return nullptr;
}

void* tryOnNewThread(void*)
{
    tryAll("new-thread");
    return nullptr;
}

void inChild(void (*body)())
{
    const pid_t child = fork();
    if (child == 0) {
        body();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

void probe(int)
{
    tryAll("main-thread");
    pthread_t thread{};
    pthread_create(&thread, nullptr, tryOnNewThread, nullptr);
    pthread_join(thread, nullptr);
    inChild([] {
        tryAll("child");
        tell("child", "ptrace", ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0);
    });
    inChild([] {
        dup2(report, STDOUT_FILENO);
        unsetenv("LD_PRELOAD");
        execlp("python3", "python3", "-c", R"(
import errno, os, socket
for what, family in ("inet", socket.AF_INET), ("inet6", socket.AF_INET6), ("netlink", socket.AF_NETLINK):
    try:
        socket.socket(family, socket.SOCK_RAW if family == socket.AF_NETLINK else socket.SOCK_DGRAM)
        print("program", what, "done")
    except OSError as refusal:
        print("program", what, errno.errorcode[refusal.errno])
try:
    open(os.environ["CONFINEMENT_FILE"], "w")
    print("program file done")
except OSError as refusal:
    print("program file", errno.errorcode[refusal.errno])
)",
            nullptr);
    });
    [[maybe_unused]] const auto written = write(wakeOld, "", 1);
}

__attribute__((constructor)) void getReady()
{
    const char* const path = std::getenv("CONFINEMENT_REPORT");
    foreignFile = std::getenv("CONFINEMENT_FILE");
    if (path == nullptr || foreignFile == nullptr) {
        return;
    }
    report = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    static int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return;
    }
    wakeOld = ends[1];
    pthread_t thread{};
    pthread_create(&thread, nullptr, tryWhenWoken, &ends[0]);
    std::signal(SIGUSR1, probe);
}

} // namespace
