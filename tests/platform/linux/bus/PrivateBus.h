#pragma once

#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace quillbrook {

/// A bus daemon of a test's own.
class PrivateBus {
public:
    explicit PrivateBus(const QString& configuration = QStringLiteral("--session"))
    {
        // A test that dies leaves nothing behind.
        daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        daemon.start(QStringLiteral("dbus-daemon"),
            {configuration, QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        if (!daemon.waitForStarted() || !daemon.waitForReadyRead()) {
            ADD_FAILURE() << "the bus doesn't start";
        }
        address = QString::fromLatin1(daemon.readLine().trimmed());
    }
    ~PrivateBus()
    {
        daemon.kill();
        daemon.waitForFinished();
    }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// Lets it answer nothing more, or again.
    void freeze(bool isOn)
    {
        ::kill(static_cast<pid_t>(daemon.processId()), isOn ? SIGSTOP : SIGCONT);
    }

    QString address{};

private:
    QProcess daemon{};
};

/// A socket that connects whoever comes, as far as its queue goes, and never says a word.
class SilentSocket {
public:
    explicit SilentSocket(const std::filesystem::path& path, int queueLength = 16)
        : path(path)
        , listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const auto name = nameOf(path);
        EXPECT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
        EXPECT_EQ(listen(listener, queueLength), 0);
    }
    ~SilentSocket()
    {
        for (const int client : clients) {
            close(client);
        }
        close(listener);
    }

    SilentSocket(const SilentSocket&) = delete;
    SilentSocket& operator=(const SilentSocket&) = delete;

    /// Lets others wait in the queue until nobody more is taken in.
    void fillQueue()
    {
        const auto name = nameOf(path);
        int client = -1;
        do {
            client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
            clients.push_back(client);
        } while (connect(client, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0);
    }

    /// Takes in one who waits, and says something after all.
    void speak(const std::string& text)
    {
        clients.push_back(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
        EXPECT_EQ(send(clients.back(), text.data(), text.size(), MSG_NOSIGNAL),
            static_cast<ssize_t>(text.size()));
    }

    std::string address() const { return "unix:path=" + path.string(); }

private:
    static sockaddr_un nameOf(const std::filesystem::path& path)
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::ranges::copy(path.string(), name.sun_path);
        return name;
    }

    std::filesystem::path path;
    int listener;
    std::vector<int> clients{};
};

} // namespace quillbrook
