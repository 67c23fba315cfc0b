#include "engine/AlertEngine.h"

#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "engine/Notifier.h"
#include "platform/Clock.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace quillbrook {

/// When an alert fires, and what it says. `{}` in the message stands for the value.
struct AlertRule {
    double threshold; // exceeded strictly
    int samples; // how many bad samples it takes
    double coolDownSec; // passed strictly
    std::string_view alertType;
    bool isCritical;
    std::string_view title;
    std::string_view message;
    int decimals; // of the value in the message
    std::string_view metricsJson;
};

namespace {

constexpr AlertRule kHighLoad = {.threshold = 20.0,
    .samples = 10,
    .coolDownSec = 1800,
    .alertType = "high_load",
    .isCritical = false,
    .title = "⚠️ 系统高负载",
    .message = "5分钟负载达到 {}，建议减少同时运行的应用",
    .decimals = 1,
    .metricsJson = R"({"load_5m":{}})"};

constexpr AlertRule kCriticalLoad = {.threshold = 50.0,
    .samples = 5,
    .coolDownSec = 900,
    .alertType = "critical_load",
    .isCritical = true,
    .title = "🔴 系统极高负载",
    .message = "5分钟负载达到 {}！系统即将不可用，请立即关闭部分应用或重启",
    .decimals = 1,
    .metricsJson = R"({"load_5m":{}})"};

constexpr AlertRule kHighMemory = {.threshold = 85.0,
    .samples = 5,
    .coolDownSec = 1800,
    .alertType = "high_memory",
    .isCritical = false,
    .title = "⚠️ 内存不足",
    .message = "内存使用率达到 {}%，可能导致应用崩溃",
    .decimals = 0,
    .metricsJson = R"({"memory_percent":{}})"};

constexpr AlertRule kHighSwap = {.threshold = 80.0,
    .samples = 1,
    .coolDownSec = 900,
    .alertType = "high_swap",
    .isCritical = true,
    .title = "🔴 Swap 严重不足",
    .message = "Swap 使用率达 {}%，系统可能强制终止应用",
    .decimals = 0,
    .metricsJson = R"({"swap_percent":{}})"};

constexpr AlertRule kWindowServerHigh = {.threshold = 30.0,
    .samples = 5,
    .coolDownSec = 900,
    .alertType = "windowserver_high",
    .isCritical = false,
    .title = "⚠️ 图形系统异常",
    .message = "WindowServer CPU 达到 {}%，图形系统可能不稳定",
    .decimals = 0,
    .metricsJson = R"({"windowserver_cpu":{}})"};

} // namespace

void AlertEngine::checkAlerts(const SystemSample& sample)
{
    const double now = platform.clock.now();
    const double load = sample.load.fiveMinutes;
    checkRule(kHighLoad, load, now, loadWarningCount, lastLoadWarningSent);
    checkRule(kCriticalLoad, load, now, loadCriticalCount, lastLoadCriticalSent);
    checkRule(kHighMemory, sample.memPercent, now, memWarningCount, lastMemWarningSent);
    if (sample.swapPercent > kHighSwap.threshold) {
        fireAfterCoolDown(kHighSwap, sample.swapPercent, now, lastSwapCriticalSent);
    }
    checkRule(kWindowServerHigh, sample.wsCPU, now, wsWarningCount, lastWsWarningSent);
}

void AlertEngine::checkRule(
    const AlertRule& rule, double value, double now, int& count, double& lastSent)
{
    if (!(value > rule.threshold)) {
        count = std::max(count - 1, 0);
        return;
    }
    ++count;
    if (count >= rule.samples && fireAfterCoolDown(rule, value, now, lastSent)) {
        count = 0;
    }
}

bool AlertEngine::fireAfterCoolDown(
    const AlertRule& rule, double value, double now, double& lastSent)
{
    if (!(now - lastSent > rule.coolDownSec)) {
        return false;
    }
    const std::string message = filled(rule.message, {fixedText(value, rule.decimals)});
    const std::string metricsJson = filled(rule.metricsJson, {shortestText(value)});
    store.addAlert(rule.alertType, rule.isCritical ? "critical" : "warning", message, metricsJson);
    notifier.sendNotification(std::string(rule.title), message);
    lastSent = now;
    log.log((rule.isCritical ? "🔴 [严重告警] " : "⚠️ [告警] ") + message);
    return true;
}

} // namespace quillbrook
