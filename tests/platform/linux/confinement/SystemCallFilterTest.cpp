#include "platform/linux/confinement/SystemCallFilter.h"
#include "support/InChild.h"

#include <gtest/gtest.h>

#include <linux/sched.h>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>
#include <utility>

namespace quillbrook {
namespace {

/// 0, or the reason why there is no such socket.
int failureOfSocket(int family)
{
    const int made = socket(family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (made < 0) {
        return errno;
    }
    close(made);
    return 0;
}

int failureOfPair(int family)
{
    std::array<int, 2> ends{};
    return socketpair(family, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0 ? 0 : errno;
}

template <typename... Arguments>
int failureOfCall(long number, Arguments... arguments)
{
    return syscall(number, arguments...) < 0 ? errno : 0;
}

class SystemCallFilterTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (inFiltered([] { return 0; }) != 0) {
            GTEST_SKIP() << "the kernel has no such filters";
        }
    }

    /// What `body` returns in a process that has the filter.
    static int inFiltered(const std::function<int()>& body, Sockets sockets = Sockets::local)
    {
        return inChild([&] { return forbidSystemCalls(sockets) ? body() : 255; });
    }
};

TEST_F(SystemCallFilterTest, SocketsThatLeaveTheMachineAreOfNoKnownFamily)
{
    for (const int family : {AF_INET, AF_INET6, AF_NETLINK, AF_PACKET, AF_VSOCK, AF_BLUETOOTH,
             AF_ALG, AF_UNSPEC, 255}) {
        EXPECT_EQ(inFiltered([&] { return failureOfSocket(family); }), EAFNOSUPPORT) << family;
    }
    EXPECT_EQ(inFiltered([] { return failureOfPair(AF_INET); }), EAFNOSUPPORT);
}

TEST_F(SystemCallFilterTest, LocalSocketsWork)
{
    EXPECT_EQ(inFiltered([] { return failureOfSocket(AF_UNIX); }), 0);
    EXPECT_EQ(inFiltered([] { return failureOfPair(AF_UNIX); }), 0);
}

TEST_F(SystemCallFilterTest, AllSocketsStayWhereTheDesktopItselfIsFarAway)
{
    EXPECT_EQ(inFiltered([] { return failureOfSocket(AF_INET); }, Sockets::all), 0);
    EXPECT_EQ(
        inFiltered([] { return failureOfCall(SYS_ptrace, PTRACE_TRACEME, 0, 0, 0); }, Sockets::all),
        EPERM);
}

TEST_F(SystemCallFilterTest, ThreadsAreBoundThatWereThereBefore)
{
    EXPECT_EQ(inChild([] {
        std::mutex mutex;
        std::condition_variable changed;
        bool isFiltered = false;
        int failure = 0;
        std::thread before([&] {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return isFiltered; });
            failure = failureOfSocket(AF_INET);
        });
        forbidSystemCalls(Sockets::local);
        {
            const std::lock_guard lock(mutex);
            isFiltered = true;
        }
        changed.notify_one();
        before.join();
        return failure;
    }),
        EAFNOSUPPORT);
}

TEST_F(SystemCallFilterTest, ThreadsAndProcessesThatComeLaterAreBoundToo)
{
    EXPECT_EQ(inFiltered([] {
        int failure = 0;
        std::thread([&] { failure = failureOfSocket(AF_INET6); }).join();
        return failure;
    }),
        EAFNOSUPPORT);
    EXPECT_EQ(inFiltered([] { return inChild([] { return failureOfSocket(AF_NETLINK); }); }),
        EAFNOSUPPORT);
    EXPECT_EQ(inFiltered([] {
        return inChild([] {
            execlp("python3", "python3", "-c",
                "import socket, sys\n"
                "try: socket.socket(socket.AF_INET)\n"
                "except OSError as refusal: sys.exit(refusal.errno)\n",
                nullptr);
            return 1;
        });
    }),
        EAFNOSUPPORT);
}

TEST_F(SystemCallFilterTest, CallsThatARecorderHasNoNeedOfAreNotPermitted)
{
    // Without the filter none of these fails for want of a right.
    const auto self = getpid();
    const std::array<int, 4> nowhere{};
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_ptrace, PTRACE_TRACEME, 0, 0, 0); }), EPERM);
    EXPECT_EQ(inFiltered([&] {
        return failureOfCall(SYS_process_vm_readv, self, nowhere.data(), 0, nowhere.data(), 0, 0);
    }),
        EPERM);
    EXPECT_EQ(inFiltered([&] {
        return failureOfCall(SYS_process_vm_writev, self, nowhere.data(), 0, nowhere.data(), 0, 0);
    }),
        EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_pidfd_getfd, -1, 0, 0); }), EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_io_uring_setup, 0, nullptr); }), EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_unshare, 0); }), EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_setns, -1, 0); }), EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_personality, 0xFFFFFFFF); }), EPERM);
    EXPECT_EQ(
        inFiltered([] { return failureOfCall(SYS_perf_event_open, nullptr, 0, 0, -1, 0); }), EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_keyctl, 255, 0, 0, 0, 0); }), EPERM);
    EXPECT_EQ(
        inFiltered([] { return failureOfCall(SYS_add_key, nullptr, nullptr, nullptr, 0, 0); }),
        EPERM);
    EXPECT_EQ(
        inFiltered([] { return failureOfCall(SYS_request_key, nullptr, nullptr, nullptr, 0); }),
        EPERM);
}

TEST_F(SystemCallFilterTest, WhatOnlyRootMightDoIsNotPermittedToRootEither)
{
    for (const long call : {SYS_mount, SYS_umount2, SYS_pivot_root, SYS_chroot, SYS_open_tree,
             SYS_move_mount, SYS_fsopen, SYS_fsconfig, SYS_fsmount, SYS_fspick,
             SYS_open_by_handle_at, SYS_quotactl, SYS_kexec_load, SYS_init_module, SYS_finit_module,
             SYS_delete_module, SYS_bpf, SYS_userfaultfd, SYS_acct, SYS_reboot, SYS_swapon,
             SYS_swapoff, SYS_sethostname, SYS_setdomainname, SYS_settimeofday, SYS_clock_settime,
             SYS_clock_adjtime, SYS_syslog}) {
        // With arguments that can't do any harm where the call gets through.
        EXPECT_EQ(inFiltered([&] { return failureOfCall(call, -1L, -1L, -1L, -1L, -1L); }), EPERM)
            << call;
    }
}

TEST_F(SystemCallFilterTest, NoSpaceOfAUsersOwnIsMade)
{
    EXPECT_EQ(inFiltered([] {
        const long child
            = syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, nullptr, nullptr, nullptr, 0);
        if (child == 0) {
            _exit(0);
        }
        return child < 0 ? errno : 0;
    }),
        EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_clone3, nullptr, 0); }), ENOSYS);
}

TEST_F(SystemCallFilterTest, NothingIsTypedIntoTheTerminal)
{
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_ioctl, -1, TIOCSTI, nullptr); }), EPERM);
    EXPECT_EQ(
        inFiltered([] { return failureOfCall(SYS_ioctl, -1, 0x100000000UL | TIOCSTI, nullptr); }),
        EPERM);
    EXPECT_EQ(inFiltered([] { return failureOfCall(SYS_ioctl, -1, TIOCGWINSZ, nullptr); }), EBADF);
}

#ifdef __x86_64__
TEST_F(SystemCallFilterTest, TheMachinesOtherSetsOfCallsAreNoWayAround)
{
    constexpr long kX32 = 0x40000000;
    EXPECT_EQ(inFiltered([] { return failureOfCall(kX32 | SYS_socket, AF_INET, SOCK_STREAM, 0); }),
        EPERM);
    const auto oldSocket = [] {
        constexpr long kSocketOf32Bits = 359;
        long result = kSocketOf32Bits;
        asm volatile("int $0x80"
                     : "+a"(result)
                     : "b"(AF_INET), "c"(SOCK_STREAM), "d"(0)
                     : "memory", "r8", "r9", "r10", "r11");
        return result < 0 ? static_cast<int>(-result) : 0;
    };
    if (inChild(oldSocket) != 0) {
        GTEST_SKIP() << "the kernel has no calls of 32 bits";
    }
    EXPECT_EQ(inFiltered(oldSocket), EPERM);
}
#endif

TEST_F(SystemCallFilterTest, AProgramThatStartsItselfIsConfinedAgain)
{
    EXPECT_EQ(
        inFiltered([] { return forbidSystemCalls(Sockets::local) ? failureOfSocket(AF_INET) : 1; }),
        EAFNOSUPPORT);
}

} // namespace
} // namespace quillbrook
