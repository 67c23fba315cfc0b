#include "engine/AttentionMachine.h"

#include "base/Fatal.h"
#include "base/Text.h"
#include "base/WholeNumber.h"
#include "categories/SystemNames.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "platform/Clock.h"
#include "platform/HumanInput.h"
#include "platform/LocaleText.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quillbrook {

namespace {

constexpr double kIdleThresholdSec = 300.0;
constexpr double kDebounceSec = 2.0;
constexpr double kRecentInputSec = 60.0;
constexpr double kPresentInputSec = 10.0;
constexpr double kRecoverableSec = 3600.0;
constexpr double kRecoverySilenceSec = 120.0;
constexpr double kHealthIntervalSec = 300.0;
constexpr double kAssumedSleepSec = 300.0;

constexpr std::int64_t kSwitchCode = 0;
constexpr auto kStartupCode = static_cast<std::int64_t>(IdleSourceType::startup);

/// Further names that never have attention. Stores may hold rows of them, which count.
constexpr std::array<std::string_view, 2> kMoreSystemNames
    = {"universalAccessAuthWarn", "SystemUIServer"};

std::string wholeSeconds(double seconds)
{
    if (!isWithinWholeNumbers(seconds)) {
        fatal("the time since the last input is not a span of time");
    }
    return std::to_string(static_cast<std::int64_t>(seconds));
}

bool isSystemBundleId(std::string_view bundleId)
{
    const std::string lowered = asciiLowered(bundleId);
    return lowered.find("helper") != std::string::npos
        || lowered.find("com.apple.loginwindow") != std::string::npos;
}

} // namespace

void AttentionMachine::begin()
{
    lastStateTransition = platform.clock.now();
    lastHIDActivityTime = lastStateTransition;
}

void AttentionMachine::attentionTick()
{
    const AttentionSnapshot snapshot = collectSnapshot();
    const AttentionState next = reduce(attentionState, snapshot);
    if (next == attentionState) {
        return;
    }
    if (!next && snapshot.isSleeping) {
        lastInactiveCause = IdleSourceType::sleep;
    } else if (!next && snapshot.isLocked) {
        lastInactiveCause = IdleSourceType::lock;
    }
    executeTransition(attentionState, next);
    attentionState = next;
}

bool AttentionMachine::isSystemApp(const std::string& name, const std::string& bundleId)
{
    if (!lastJudgement || lastJudgement->name != name || lastJudgement->bundleId != bundleId) {
        lastJudgement = Judgement{name, bundleId, isSystemName(name) || isSystemBundleId(bundleId)};
    }
    return lastJudgement->isSystemApp;
}

bool AttentionMachine::isSystemName(const std::string& name) const
{
    // Our own name is among them on purpose: looking at the dashboard is not a session.
    const auto isIn = [&](std::string_view systemName) {
        return platform.localeText.containsIgnoringCase(name, systemName);
    };
    return std::ranges::any_of(kSystemNames, isIn) || std::ranges::any_of(kMoreSystemNames, isIn);
}

AttentionSnapshot AttentionMachine::collectSnapshot()
{
    AttentionSnapshot snapshot{.isLocked = isLocked, .isSleeping = isSleeping};
    const auto front = platform.workspace.frontmostApplication();
    if (!front) {
        return snapshot;
    }
    const std::string name = front->localizedName.value_or("Unknown");
    const std::string bundleId = front->bundleIdentifier.value_or("");
    if (!isSystemApp(name, bundleId)) {
        snapshot.frontmostName = name;
        snapshot.frontmostBundleId = bundleId;
    }
    return snapshot;
}

AttentionState AttentionMachine::reduce(
    const AttentionState& state, const AttentionSnapshot& snapshot)
{
    if (snapshot.isLocked || snapshot.isSleeping || !snapshot.frontmostName
        || !snapshot.frontmostBundleId) {
        return std::nullopt;
    }
    const ActiveApp front{*snapshot.frontmostBundleId, *snapshot.frontmostName};
    if (!state) {
        // Only sleep and lock end by themselves; from all else the minute's check brings back.
        const bool endsByItself = lastInactiveCause == IdleSourceType::sleep
            || lastInactiveCause == IdleSourceType::lock;
        return endsByItself ? AttentionState(front) : std::nullopt;
    }
    if (front.bundleId == state->bundleId) {
        pendingFrontmost.reset();
        return state;
    }
    const double now = platform.clock.now();
    if (!pendingFrontmost || pendingFrontmost->bundleId != front.bundleId) {
        pendingFrontmost = PendingFrontmost{front.appName, front.bundleId, now};
        return state;
    }
    if (now - pendingFrontmost->firstSeenAt < kDebounceSec) {
        return state;
    }
    pendingFrontmost.reset();
    return front;
}

void AttentionMachine::executeTransition(const AttentionState& from, const AttentionState& to)
{
    const double now = platform.clock.now();
    lastStateTransition = now;
    if (from && to) {
        switchTo(*to, now);
    } else if (to) {
        resume(*to, now);
    } else {
        becomeIdle(now);
    }
}

void AttentionMachine::becomeIdle(double now)
{
    {
        const MonitorStore::Together whole = store.transaction();
        store.closeCurrentSession();
        store.startIdlePeriod(now, causeCode());
    }
    pendingFrontmost.reset();
    log.log(filled("💤 {}（{}）→ 空闲", {currentAppName, fmtDuration(now - currentSessionStart)}));
}

void AttentionMachine::switchTo(const ActiveApp& app, double now)
{
    const std::string duration = fmtDuration(now - currentSessionStart);
    const std::string oldName = currentAppName;
    {
        const MonitorStore::Together whole = store.transaction();
        store.closeCurrentSession();
        store.startNewSession(app.appName, app.bundleId, kSwitchCode);
    }
    currentAppName = app.appName;
    currentSessionStart = now;
    log.log(filled("🔄 {}（{}）→ {}", {oldName, duration, app.appName}));
}

void AttentionMachine::resume(const ActiveApp& app, double now)
{
    // A wake that wrote the night by itself leaves no current session: what follows is a startup.
    const std::int64_t closeType = store.hasCurrentSession() ? causeCode() : kStartupCode;
    lastInactiveCause.reset();
    {
        const MonitorStore::Together whole = store.transaction();
        store.closeIdlePeriods(now);
        store.startNewSession(app.appName, app.bundleId, closeType);
    }
    currentAppName = app.appName;
    currentSessionStart = now;
    log.log("🟢 " + app.appName);
}

void AttentionMachine::humanPresenceCheck()
{
    const double now = platform.clock.now();
    const double silence = now - lastStateTransition;
    const double hid = platform.humanInput.secondsSinceLastInput();
    const bool wasActive = attentionState.has_value();

    if (attentionState && silence > kIdleThresholdSec && hid > kIdleThresholdSec) {
        goIdleByTimeout(now);
    }
    if (hid < kRecentInputSec) {
        lastHIDActivityTime = now;
    }
    // The silence is the one from before this check on purpose: within an hour of the last input
    // a person who went idle just now comes back at once, as a new session of the same application.
    const double sinceInput = now - lastHIDActivityTime;
    if (!attentionState
        && (hid < kPresentInputSec
            || (sinceInput < kRecoverableSec && silence > kRecoverySilenceSec))) {
        tryToRecover(now);
    }
    if (now - lastHealthCheckLog >= kHealthIntervalSec) {
        lastHealthCheckLog = now;
        logHealth(now, hid, wasActive);
    }
}

void AttentionMachine::goIdleByTimeout(double now)
{
    log.log(
        filled("💤 {}（{}）超时 → 空闲", {currentAppName, fmtDuration(now - currentSessionStart)}));
    store.closeCurrentSession();
    store.startIdlePeriod(now, static_cast<std::int64_t>(IdleSourceType::hidTimeout));
    attentionState.reset();
    pendingFrontmost.reset();
    lastStateTransition = now;
    lastInactiveCause = IdleSourceType::hidTimeout;
}

void AttentionMachine::tryToRecover(double now)
{
    // Stricter than a tick's look on purpose: an application without a name or an identifier is no
    // proof that somebody is there.
    const auto front = platform.workspace.frontmostApplication();
    if (!front || !front->localizedName || !front->bundleIdentifier
        || isSystemApp(*front->localizedName, *front->bundleIdentifier)) {
        return;
    }
    const std::int64_t closeType = causeCode();
    lastInactiveCause.reset();
    store.closeIdlePeriods(now);
    log.log("🔄 恢复 | " + *front->localizedName);
    store.startNewSession(*front->localizedName, *front->bundleIdentifier, closeType);
    currentAppName = *front->localizedName;
    currentSessionStart = now;
    attentionState = ActiveApp{*front->bundleIdentifier, *front->localizedName};
    pendingFrontmost.reset();
    lastStateTransition = now;
}

void AttentionMachine::logHealth(double now, double hid, bool wasActive)
{
    const std::string letter = wasActive ? "A" : "I";
    const std::string app = attentionState ? currentAppName : "—";
    const std::string duration = attentionState ? fmtDuration(now - currentSessionStart) : "—";
    log.log(filled("💓 [{}] {} {} | hid={}s", {letter, app, duration, wholeSeconds(hid)}));
}

void AttentionMachine::screensDidSleep()
{
    isLocked = true;
    log.log("🔒 屏幕已休眠 (锁屏/屏保)");
}

void AttentionMachine::screensDidWake()
{
    isLocked = false;
    log.log("🔓 屏幕已唤醒");
}

void AttentionMachine::systemWillSleep()
{
    isSleeping = true;
    sleepStartTime = platform.clock.now();
    lastInactiveCause = IdleSourceType::sleep;
    log.log("💤 系统即将睡眠");
}

void AttentionMachine::systemDidWake()
{
    const double now = platform.clock.now();
    isSleeping = false;
    lastHIDActivityTime = now;
    if (attentionState) {
        // No tick ran between the announcement and the sleep: the night is written whole.
        const double sleepStart = sleepStartTime > 0 ? sleepStartTime : now - kAssumedSleepSec;
        store.endCurrentSessionAt(sleepStart);
        store.addIdlePeriod(sleepStart, now, static_cast<std::int64_t>(IdleSourceType::sleep));
        attentionState.reset();
        lastInactiveCause = IdleSourceType::sleep;
        lastStateTransition = now;
    }
    log.log("☀️ 系统已唤醒");
}

std::int64_t AttentionMachine::causeCode() const
{
    return static_cast<std::int64_t>(lastInactiveCause.value_or(IdleSourceType::hidTimeout));
}

} // namespace quillbrook
