#include "pages/views/AboutView.h"

#include "pages/figures/AboutFigures.h"
#include "pages/kit/LinkButton.h"
#include "pages/views/DocumentSheet.h"
#include "pages/views/MakerLine.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <QDesktopServices>
#include <QFile>
#include <QScrollBar>
#include <QTextBrowser>
#include <QUrl>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class AboutViewTest : public PagesFixture {
protected:
    std::vector<std::string> textsOfPage()
    {
        page = shownPage<AboutView>({});
        return textsIn(*page);
    }

    static std::vector<std::string> textsIn(QWidget& widget)
    {
        return namesOf(elementsOf(widget, QAccessible::StaticText));
    }

    /// The sheet that the link on the page opens.
    DocumentSheet& openPrivacy()
    {
        page = shownPage<AboutView>({});
        press(button(*page, "隐私政策 →"), Qt::Key_Space);
        QCoreApplication::processEvents();
        return *page->findChild<DocumentSheet*>();
    }

    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::unique_ptr<AboutView> page{};
};

TEST_F(AboutViewTest, SaysAllInItsOrder)
{
    machine.bundleValues.set("CFBundleShortVersionString", "2.3.4");
    machine.bundleValues.set("BuildDate", "2026-03-01");
    EXPECT_THAT(textsOfPage(),
        ElementsAre("观自在菩萨，行深般若波罗蜜多时，", "墨川五蕴皆空", "墨川·Quillbrook", "v2.3.4",
            "构建于 2026-03-01", "Quillbrook 作者 · MIT 许可证", "功能", "前台应用追踪",
            "自动记录每个应用的使用时长和切换次数", "系统资源监控",
            "CPU / 内存 / Swap / 负载 实时采集，每 60 秒快照", "键盘活动统计",
            "击键次数 & token 消耗估算（需 keylog 采集）", "智能告警",
            "高负载 / 内存不足 / 图形异常时自动推送通知", "可视化报告",
            "时间线 / 条形图 / 告警历史 / 键盘活动", "习惯追踪",
            "应用使用分类统计、时长占比与时段分析", "iLife 生命进度",
            "年度进度可视化 + 生命格子（基于上海人均寿命 84.11 岁）", "数据隐私 & 技术栈",
            "所有数据仅存储在本地 SQLite", "绝不外传，无网络请求，无第三方 SDK", "技术栈",
            "零第三方依赖，纯 macOS 原生", "C++20", "Qt 6", "SQLite"));
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::Button)), ElementsAre("隐私政策 →"));
}

TEST_F(AboutViewTest, SaysOnLinuxWhatIsTrueThere)
{
    machine.hostFacts.setSystem(SystemKind::linuxDesktop);
    const auto texts = textsOfPage();
    EXPECT_THAT(texts, Contains("Linux 原生程序，只用发行版提供的开源库"));
    EXPECT_THAT(texts, Contains("XCB"));
    EXPECT_THAT(texts, Not(Contains("零第三方依赖，纯 macOS 原生")));
}

TEST_F(AboutViewTest, FallsBackWithoutValuesOfThePackage)
{
    const auto texts = textsOfPage();
    EXPECT_THAT(texts, Contains("v0.13.0"));
    EXPECT_THAT(texts, Contains("构建于 2026-01-01"));
    machine.timeZone.setSecondsFromUtc(-28800);
    EXPECT_THAT(textsOfPage(), Contains("构建于 2025-12-31"));
}

TEST_F(AboutViewTest, ScrollsByKeysWithoutAScrollBar)
{
    page = shownPage<AboutView>({});
    EXPECT_FALSE(page->verticalScrollBar()->isVisible());
    ASSERT_GT(page->verticalScrollBar()->maximum(), 0);
    press(*page, Qt::Key_End);
    EXPECT_EQ(page->verticalScrollBar()->value(), page->verticalScrollBar()->maximum());
}

TEST_F(AboutViewTest, TheLinkOpensTheStatementThatTheProgramCarries)
{
    DocumentSheet& sheet = openPrivacy();
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_TRUE(sheet.isModal());
    EXPECT_EQ(sheet.windowTitle(), "隐私政策");
    QFile file(QUILLBROOK_DOCS "/privacy_quillbrook.md");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<std::string> written;
    for (const DocumentBlock& block : documentBlocks(file.readAll().toStdString())) {
        written.push_back(block.text);
    }
    EXPECT_EQ(textsIn(sheet), written);
    press(*sheet.focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(page->findChild<DocumentSheet*>(), nullptr);
}

TEST_F(AboutViewTest, TheStatementIsReadByKeys)
{
    DocumentSheet& sheet = openPrivacy();
    auto& text = *sheet.findChild<ScrollPage*>();
    EXPECT_EQ(sheet.focusWidget(), &text);
    EXPECT_EQ(text.accessibleName(), "隐私政策");
    ASSERT_GT(text.verticalScrollBar()->maximum(), 0);
    press(text, Qt::Key_PageDown);
    EXPECT_GT(text.verticalScrollBar()->value(), 0);
    EXPECT_EQ(text.horizontalScrollBar()->maximum(), 0);
    sheet.activateWindow();
    press(text, Qt::Key_Tab);
    EXPECT_EQ(sheet.focusWidget()->accessibleName(), "完成");
    press(*sheet.focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(AboutViewTest, AMakerWithASiteLeadsThere)
{
    QTextBrowser browser; // stands in for the person's, and keeps the address
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    MakerLine line({.credit = "credit", .site = "https://quillbrook.example/zh"});
    line.show();
    EXPECT_THAT(textsIn(line), ElementsAre("credit"));
    button(line, "quillbrook.example").click();
    EXPECT_EQ(browser.source(), QUrl("https://quillbrook.example/zh"));
    QDesktopServices::unsetUrlHandler("https");
}

} // namespace
} // namespace quillbrook
