#include "support/XServer.h"

#include "base/Fatal.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace quillbrook {

XServer::XServer(const std::vector<std::string>& options)
{
    std::vector<const char*> arguments = {
        "Xvfb", "-displayfd", "3", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"};
    for (const std::string& option : options) {
        arguments.push_back(option.c_str());
    }
    arguments.push_back(nullptr);
    std::array<int, 2> pipeEnds{};
    if (pipe(pipeEnds.data()) != 0) {
        fatal("no pipe for the X server");
    }
    process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that dies leaves no server behind
        dup2(pipeEnds[1], 3);
        execvp("Xvfb", const_cast<char* const*>(arguments.data()));
        _exit(127);
    }
    close(pipeEnds[1]);
    std::string display = ":";
    for (char c = 0; read(pipeEnds[0], &c, 1) == 1 && c != '\n';) {
        display += c;
    }
    close(pipeEnds[0]);
    if (process < 0 || display == ":") {
        fatal("Xvfb doesn't start");
    }
    setenv("DISPLAY", display.c_str(), 1);
}

XServer::~XServer()
{
    end(SIGTERM); // lets it take away its socket, of which a computer has few
    unsetenv("DISPLAY");
}

void XServer::kill()
{
    end(SIGKILL);
}

void XServer::end(int signal)
{
    if (process > 0) {
        ::kill(process, signal);
        waitpid(process, nullptr, 0);
        process = -1;
    }
}

} // namespace quillbrook
