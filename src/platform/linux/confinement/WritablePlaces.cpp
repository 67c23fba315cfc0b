#include "platform/linux/confinement/WritablePlaces.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillbrook {

namespace {

// What Landlock has learnt since its first version. The headers may be older than the kernel.
constexpr long kKnowsMoving = 2;
constexpr std::uint64_t kMove = 1ULL << 13U; // from one folder to another
constexpr long kKnowsCutting = 3;
constexpr std::uint64_t kCut = 1ULL << 14U;

/// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(long number) : number(static_cast<int>(number)) {}
    ~Descriptor()
    {
        if (number >= 0) {
            close(number);
        }
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

private:
    int number;
};

/// The changes that this kernel can refuse; none without Landlock.
std::uint64_t knownChanges()
{
    const long version
        = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) {
        return 0;
    }
    std::uint64_t changes = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR
        | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR
        | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK
        | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK
        | LANDLOCK_ACCESS_FS_MAKE_SYM;
    if (version >= kKnowsMoving) {
        changes |= kMove;
    }
    if (version >= kKnowsCutting) {
        changes |= kCut;
    }
    return changes;
}

std::uint64_t changesOf(WritablePlace::Kind kind)
{
    return kind == WritablePlace::Kind::existingFiles ? LANDLOCK_ACCESS_FS_WRITE_FILE | kCut
                                                      : ~std::uint64_t{0};
}

void allow(const Descriptor& rules, const WritablePlace& place, std::uint64_t known)
{
    const Descriptor folder(open(place.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) {
        return;
    }
    landlock_path_beneath_attr rule{};
    rule.allowed_access = changesOf(place.kind) & known;
    rule.parent_fd = folder.get();
    syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

} // namespace

bool canRefuseWriting()
{
    return knownChanges() != 0;
}

bool writeOnlyIn(std::span<const WritablePlace> places)
{
    landlock_ruleset_attr attributes{};
    attributes.handled_access_fs = knownChanges();
    const Descriptor rules(
        syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0));
    if (!rules.isOpen()) {
        return false;
    }
    for (const WritablePlace& place : places) {
        allow(rules, place, attributes.handled_access_fs);
    }
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
        && syscall(SYS_landlock_restrict_self, rules.get(), 0) == 0;
}

} // namespace quillbrook
