#include "platform/linux/confinement/SystemCallFilter.h"

#include <linux/sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

namespace quillbrook {

namespace {

struct ReleaseFilter {
    void operator()(scmp_filter_ctx filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, ReleaseFilter>;

constexpr std::uint32_t kRefused = SCMP_ACT_ERRNO(EPERM);
/// As on a kernel without that family, which every program is prepared for.
constexpr std::uint32_t kNoSuchFamily = SCMP_ACT_ERRNO(EAFNOSUPPORT);
constexpr std::uint32_t kNoSuchCall = SCMP_ACT_ERRNO(ENOSYS);

constexpr std::uint64_t kIntMask = 0xFFFFFFFF; // of an argument the kernel reads the lower half

#ifdef __s390__
constexpr unsigned int kFlagsOfClone = 1;
#else
constexpr unsigned int kFlagsOfClone = 0;
#endif

constexpr auto kNeverNeeded = std::to_array<int>({
    // other processes: their memory, their descriptors, a socket of theirs among these
    SCMP_SYS(ptrace),
    SCMP_SYS(process_vm_readv),
    SCMP_SYS(process_vm_writev),
    SCMP_SYS(process_madvise),
    SCMP_SYS(pidfd_getfd),
    // a second way to nearly every other call, sockets included
    SCMP_SYS(io_uring_setup),
    SCMP_SYS(io_uring_enter),
    SCMP_SYS(io_uring_register),
    // file systems, and files past their paths
    SCMP_SYS(mount),
    SCMP_SYS(umount),
    SCMP_SYS(umount2),
    SCMP_SYS(pivot_root),
    SCMP_SYS(chroot),
    SCMP_SYS(open_tree),
    SCMP_SYS(move_mount),
    SCMP_SYS(fsopen),
    SCMP_SYS(fsconfig),
    SCMP_SYS(fsmount),
    SCMP_SYS(fspick),
    SCMP_SYS(mount_setattr),
    SCMP_SYS(open_by_handle_at),
    SCMP_SYS(quotactl),
    SCMP_SYS(quotactl_fd),
    // another view of the machine
    SCMP_SYS(unshare),
    SCMP_SYS(setns),
    // the kernel itself, and what reaches deep into it
    SCMP_SYS(kexec_load),
    SCMP_SYS(kexec_file_load),
    SCMP_SYS(init_module),
    SCMP_SYS(finit_module),
    SCMP_SYS(delete_module),
    SCMP_SYS(bpf),
    SCMP_SYS(perf_event_open),
    SCMP_SYS(userfaultfd),
    SCMP_SYS(modify_ldt),
    SCMP_SYS(iopl),
    SCMP_SYS(ioperm),
    SCMP_SYS(personality),
    SCMP_SYS(syslog),
    SCMP_SYS(acct),
    // the kernel's keys
    SCMP_SYS(keyctl),
    SCMP_SYS(add_key),
    SCMP_SYS(request_key),
    // the machine and its clock
    SCMP_SYS(reboot),
    SCMP_SYS(swapon),
    SCMP_SYS(swapoff),
    SCMP_SYS(sethostname),
    SCMP_SYS(setdomainname),
    SCMP_SYS(settimeofday),
    SCMP_SYS(clock_settime),
    SCMP_SYS(clock_settime64),
    SCMP_SYS(clock_adjtime),
    SCMP_SYS(clock_adjtime64),
    SCMP_SYS(vhangup),
});

/// Numbers below zero stand for calls that this kind of machine doesn't have.
bool refuse(const Filter& filter, int call, std::uint32_t answer)
{
    return call < 0 || seccomp_rule_add(filter.get(), answer, call, 0) == 0;
}

bool refuseWhen(const Filter& filter, int call, std::uint32_t answer, const scmp_arg_cmp& condition)
{
    return call < 0 || seccomp_rule_add_array(filter.get(), answer, call, 1, &condition) == 0;
}

bool refuseNeverNeeded(const Filter& filter)
{
    return std::ranges::all_of(
        kNeverNeeded, [&](int call) { return refuse(filter, call, kRefused); });
}

/// A user's name space brings all rights within it. The flags of the newer call lie where a filter
/// can't look; the library goes back to the older one.
bool refuseUserSpaces(const Filter& filter)
{
    return refuse(filter, SCMP_SYS(clone3), kNoSuchCall)
        && refuseWhen(filter, SCMP_SYS(clone), kRefused,
            {.arg = kFlagsOfClone,
                .op = SCMP_CMP_MASKED_EQ,
                .datum_a = CLONE_NEWUSER,
                .datum_b = CLONE_NEWUSER});
}

/// A terminal takes characters from its programs as if they were typed, and its shell obeys them.
bool refuseTypingForOthers(const Filter& filter)
{
    return refuseWhen(filter, SCMP_SYS(ioctl), kRefused,
        {.arg = 1, .op = SCMP_CMP_MASKED_EQ, .datum_a = kIntMask, .datum_b = TIOCSTI});
}

bool refuseNetworks(const Filter& filter)
{
    const scmp_arg_cmp isNotLocal{.arg = 0, .op = SCMP_CMP_NE, .datum_a = AF_UNIX, .datum_b = 0};
    return refuseWhen(filter, SCMP_SYS(socket), kNoSuchFamily, isNotLocal)
        && refuseWhen(filter, SCMP_SYS(socketpair), kNoSuchFamily, isNotLocal);
}

} // namespace

bool forbidSystemCalls(Sockets sockets)
{
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW));
    return filter != nullptr
        // The machine's other sets of calls, which have other numbers, are refused as a whole.
        && seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, kRefused) == 0
        && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0
        && refuseNeverNeeded(filter) && refuseUserSpaces(filter) && refuseTypingForOthers(filter)
        && (sockets == Sockets::all || refuseNetworks(filter)) && seccomp_load(filter.get()) == 0;
}

} // namespace quillbrook
