#include "tests/report/ReportFixture.h"

#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

/// A main loop whose blocks may come from any thread, and run when it is told.
class ThreadedMainLoop final : public MainLoop {
public:
    void repeatEvery(double, Block) override {}
    void runAfter(double, Block) override {}
    void post(Block block) override
    {
        const std::scoped_lock lock(mutex);
        blocks.push_back(std::move(block));
        came.notify_one();
    }

    /// Waits for a block and runs it.
    void runOne()
    {
        std::unique_lock lock(mutex);
        came.wait(lock, [this] { return !blocks.empty(); });
        const Block block = std::move(blocks.front());
        blocks.pop_front();
        lock.unlock();
        block();
    }

    /// Runs what is there already.
    void runAll()
    {
        while (!isEmpty()) {
            runOne();
        }
    }

private:
    bool isEmpty()
    {
        const std::scoped_lock lock(mutex);
        return blocks.empty();
    }

    std::mutex mutex{};
    std::condition_variable came{};
    std::deque<Block> blocks{};
};

/// A thread for each piece of work.
class ThreadedWorkQueues final : public WorkQueues {
public:
    ~ThreadedWorkQueues() override { finish(); }

    void runUserInitiated(Block block) override { threads.emplace_back(std::move(block)); }
    void runDefault(Block block) override { threads.emplace_back(std::move(block)); }

    void finish()
    {
        for (std::thread& thread : threads) {
            thread.join();
        }
        threads.clear();
    }

private:
    std::vector<std::thread> threads{};
};

class RefreshThreadsTest : public ReportFixture {
protected:
    RefreshThreadsTest()
    {
        for (int i = 0; i < 20; ++i) {
            session("App " + std::to_string(i), i * 100, i * 100 + 90);
        }
    }

    Platform platform()
    {
        const Platform p = machine.platform();
        return {.clock = p.clock,
            .mainLoop = loop,
            .workQueues = queues,
            .workspace = p.workspace,
            .humanInput = p.humanInput,
            .accessibility = p.accessibility,
            .keyCounting = p.keyCounting,
            .inputSource = p.inputSource,
            .kernelFigures = p.kernelFigures,
            .childProcess = p.childProcess,
            .userDefaults = p.userDefaults,
            .bundleValues = p.bundleValues,
            .localeText = p.localeText,
            .directories = p.directories,
            .loginItem = p.loginItem,
            .timeZone = p.timeZone,
            .hostFacts = p.hostFacts,
            .appearance = p.appearance,
            .idleMemory = p.idleMemory,
            .notices = p.notices,
            .windowActivation = p.windowActivation,
            .systemSound = p.systemSound,
            .permissionGuide = p.permissionGuide,
            .panelItem = p.panelItem,
            .desktopExtension = p.desktopExtension};
    }

    ThreadedMainLoop loop{};
    ThreadedWorkQueues queues{};
};

TEST_F(RefreshThreadsTest, EveryRefreshOfABurstPublishes)
{
    DataProvider provider(platform());
    int publications = 0;
    const auto subscription
        = provider.data.observe([&publications](const auto&) { ++publications; });
    int wanted = 1;
    for (int round = 0; round < 3; ++round) {
        for (const NavTab tab : {NavTab::today, NavTab::history, NavTab::habit, NavTab::keylog,
                 NavTab::alerts, NavTab::session, NavTab::idles, NavTab::focus}) {
            provider.selectedTab.set(tab);
            provider.refresh();
            ++wanted;
        }
    }
    while (publications < wanted) {
        loop.runOne();
    }
    queues.finish();
    loop.runAll();
    EXPECT_EQ(publications, wanted);
    EXPECT_FALSE(provider.isLoading.get());
    EXPECT_FALSE(provider.categoryTrend.get().empty());
}

TEST_F(RefreshThreadsTest, AProviderMayGoWhileWorkersRun)
{
    for (int round = 0; round < 20; ++round) {
        auto provider = std::make_unique<DataProvider>(platform());
        provider->selectedTab.set(NavTab::habit);
        provider->refresh();
        if (round % 2 == 0) {
            loop.runOne();
        }
        provider.reset();
    }
    queues.finish();
    loop.runAll();
}

TEST_F(RefreshThreadsTest, TheWriterGoesOnMeanwhile)
{
    DataProvider provider(platform());
    const StoreReader writer(path());
    for (int i = 0; i < 50; ++i) {
        provider.selectedTab.set(i % 2 == 0 ? NavTab::today : NavTab::focus);
        provider.refresh();
        writer.exec("INSERT INTO app_sessions (app_name, started_at, ended_at, duration_sec) "
                    "VALUES ('Writer', 1767240000.5, 1767240010.5, 10)");
        loop.runOne();
    }
    queues.finish();
    loop.runAll();
    provider.selectedTab.set(NavTab::today);
    provider.refresh();
    queues.finish();
    loop.runAll();
    EXPECT_EQ(provider.data.get()->overview->sessionCount, 70);
}

} // namespace
} // namespace quillbrook
