#include "engine/MonitorEngine.h"

#include "base/AtomicFile.h"
#include "base/Text.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

void MonitorEngine::start()
{
    if (isRunning) {
        return;
    }
    isRunning = true;
    attention.begin();
    if (!checkSingleInstance()) {
        log.log("⚠️ MonitorEngine 已在运行中，退出启动");
        isRunning = false;
        return;
    }

    std::error_code ignored;
    fs::create_directories(files.logPath().parent_path(), ignored);
    log.openFile(files.logPath());
    log.log("🚀 引擎启动");

    if (!store.dbOpen(files.dbPath())) {
        log.log("❌ 无法打开数据库，监控引擎启动失败");
        isRunning = false;
        return;
    }
    store.dbCreateTables();
    store.dbRepair();

    registerObservers();
    keystrokes.setupKeyTap();
    scheduleTimers();
    log.log("✅ 就绪");
}

void MonitorEngine::stop()
{
    if (!isRunning) {
        return;
    }
    isRunning = false;
    log.log("🛑 监控引擎停止中...");
    store.closeCurrentSession();
    store.closeIdlePeriodsAtExit();
    keystrokes.flushKeystrokesToDB();
    keystrokes.disableTap();
    removePidFile();
    store.dbClose();
    log.closeFile();
    log.log("✅ 监控引擎已停止"); // standard output only, as the file is closed
}

bool MonitorEngine::checkSingleInstance()
{
    const int instances = platform.workspace.runningApplicationCount("cn.tarnlow.quillbrook");
    if (instances >= 2) {
        log.log(
            filled("⚠️ Quillbrook 已有 {} 个实例在运行", {std::to_string(instances)}));
        return false;
    }
    writeAtomically(files.pidPath(), std::to_string(platform.workspace.processIdentifier()));
    return true;
}

void MonitorEngine::removePidFile()
{
    std::error_code ignored;
    fs::remove(files.pidPath(), ignored);
}

void MonitorEngine::registerObservers()
{
    Workspace& workspace = platform.workspace;
    workspace.addObserver(WorkspaceNotification::screensDidSleep,
        lifetime.whileAlive([this] { attention.screensDidSleep(); }));
    workspace.addObserver(WorkspaceNotification::screensDidWake,
        lifetime.whileAlive([this] { attention.screensDidWake(); }));
    workspace.addObserver(WorkspaceNotification::willSleep,
        lifetime.whileAlive([this] { attention.systemWillSleep(); }));
    workspace.addObserver(
        WorkspaceNotification::didWake, lifetime.whileAlive([this] { attention.systemDidWake(); }));
}

void MonitorEngine::scheduleTimers()
{
    MainLoop& mainLoop = platform.mainLoop;
    mainLoop.repeatEvery(
        60, lifetime.whileAlive([this] { alertEngine.checkAlerts(sampler.sample()); }));
    mainLoop.repeatEvery(60, lifetime.whileAlive([this] { keystrokes.flushKeystrokesToDB(); }));
    mainLoop.repeatEvery(1, lifetime.whileAlive([this] {
        if (isRunning) {
            store.writeDue();
            attention.attentionTick();
        }
    }));
    mainLoop.repeatEvery(60, lifetime.whileAlive([this] { attention.humanPresenceCheck(); }));
}

} // namespace quillbrook
