#include "pages/figures/PermissionSetupFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr double kWidth = 500;

const TextWidth kTenPoints = [](std::string_view text, const TextFace&) {
    return static_cast<double>(text.size()) / 3 * 10; // of characters of three bytes
};

constexpr PermissionState kFirstLaunch{};
constexpr PermissionState kGranted{.isAccessibilityGranted = true};
constexpr PermissionState kUpdated{.isNewVersion = true, .isAccessibilityGranted = true};
constexpr PermissionState kUpdatedNotGranted{.isNewVersion = true};
constexpr PermissionState kReset{.isNewVersion = true, .didResetTCC = true};
constexpr PermissionState kGrantedAnew{
    .isNewVersion = true, .isAccessibilityGranted = true, .didResetTCC = true};
constexpr std::array kAllStates
    = {kFirstLaunch, kGranted, kUpdated, kUpdatedNotGranted, kReset, kGrantedAnew};

std::vector<Mark> marksOf(const PermissionState& state)
{
    return permissionSetupMarks(state, kWidth, kTenPoints);
}

std::vector<std::string> spoken(const std::vector<Mark>& marks)
{
    std::vector<std::string> names;
    for (const Mark& mark : marks) {
        if (mark.role == MarkRole::text) {
            names.push_back(mark.name);
        }
    }
    return names;
}

/// All symbols, in their order.
std::vector<SymbolMark> symbolsOf(const std::vector<Mark>& marks)
{
    std::vector<SymbolMark> symbols;
    for (const Mark& mark : marks) {
        symbols.insert(symbols.end(), mark.symbols.begin(), mark.symbols.end());
    }
    return symbols;
}

/// The tint of the symbol of that name; that of none where it is missing.
Tint tintOf(const std::vector<Mark>& marks, std::string_view symbol)
{
    const auto symbols = symbolsOf(marks);
    const auto found = std::ranges::find(symbols, symbol, &SymbolMark::symbol);
    return found == symbols.end() ? Tint{kBlack, 0} : found->tint;
}

Mark named(const std::vector<Mark>& marks, std::string_view name)
{
    const auto found = std::ranges::find(marks, name, &Mark::name);
    return found == marks.end() ? Mark{.texts = {TextLine{.text = "no such mark"}}} : *found;
}

std::vector<std::string> buttonTexts(const PermissionState& state)
{
    std::vector<std::string> texts;
    for (const SetupButton& button : setupActions(state).buttons) {
        texts.push_back(button.text);
    }
    return texts;
}

PermissionRow row(bool isGranted)
{
    return {.icon = "keyboard",
        .iconColor = SystemColor::orange,
        .title = "辅助功能",
        .subtitle = "用途",
        .isRequired = true,
        .isGranted = isGranted};
}

TEST(PermissionSetupFigures, AFirstLaunchIsWelcomed)
{
    const auto marks = marksOf(kFirstLaunch);
    EXPECT_THAT(spoken(marks),
        ElementsAre("欢迎使用 Quillbrook", "首次启动需要配置必要权限", "辅助功能", "必须",
            "用于键盘击键监控，统计输入数据", "未授权",
            "仅需要辅助功能权限，不需要输入监控或屏幕录制", "所有击键数据仅存储在本地，绝不外传"));
    EXPECT_EQ(
        tintOf(marks, "shield.lefthalf.filled.badge.checkmark"), (Tint{InterfaceColor::accent}));
}

TEST(PermissionSetupFigures, AnUpdateThatFindsAGrantWarns)
{
    const auto marks = marksOf(kUpdated);
    EXPECT_THAT(spoken(marks),
        ElementsAre("检测到应用已更新", "新版应用可能需要重新授权辅助功能权限",
            "系统显示已授权，但版本更新后旧授权可能失效", "辅助功能", "必须",
            "用于键盘击键监控，统计输入数据", "已授权",
            "仅需要辅助功能权限，不需要输入监控或屏幕录制", "所有击键数据仅存储在本地，绝不外传"));
    const Tint orange{SystemColor::orange};
    EXPECT_EQ(tintOf(marks, "arrow.triangle.2.circlepath.circle.fill"), orange);
    EXPECT_EQ(tintOf(marks, "exclamationmark.triangle.fill"), orange);
    EXPECT_EQ(named(marks, "系统显示已授权，但版本更新后旧授权可能失效").texts[0].tint, orange);
}

TEST(PermissionSetupFigures, AnUpdateWithoutAGrantIsWelcomedLikeAFirstLaunch)
{
    EXPECT_EQ(marksOf(kUpdatedNotGranted), marksOf(kFirstLaunch));
    EXPECT_EQ(marksOf(kReset), marksOf(kFirstLaunch));
    EXPECT_EQ(buttonTexts(kUpdatedNotGranted), buttonTexts(kFirstLaunch));
    EXPECT_EQ(buttonTexts(kReset), buttonTexts(kFirstLaunch));
}

TEST(PermissionSetupFigures, AGrantAfterAResetHasTheUpdatedHeadAgain)
{
    EXPECT_EQ(marksOf(kGrantedAnew), marksOf(kUpdated));
    EXPECT_THAT(buttonTexts(kGrantedAnew), ElementsAre("开始使用 Quillbrook"));
}

TEST(PermissionSetupFigures, HeadAndNotesAreSetAsTheirKind)
{
    const auto marks = marksOf(kFirstLaunch);
    const TextLine title = named(marks, "欢迎使用 Quillbrook").texts[0];
    EXPECT_EQ(title.face, (TextFace{TextFamily::system, 17, TextWeight::bold}));
    EXPECT_EQ(title.tint, primaryTint());
    EXPECT_EQ(title.alignment, TextAlignment::center);
    EXPECT_EQ(center(title.place).x, kWidth / 2);
    const TextLine subtitle = named(marks, "首次启动需要配置必要权限").texts[0];
    EXPECT_EQ(subtitle.face, (TextFace{TextFamily::system, 11}));
    EXPECT_EQ(subtitle.tint, secondaryTint());
    EXPECT_EQ(subtitle.alignment, TextAlignment::center);
    EXPECT_EQ(tintOf(marks, "info.circle.fill"), (Tint{SystemColor::blue}));
    EXPECT_EQ(tintOf(marks, "lock.shield.fill"), (Tint{SystemColor::green}));
    for (const char* note :
        {"仅需要辅助功能权限，不需要输入监控或屏幕录制", "所有击键数据仅存储在本地，绝不外传"}) {
        EXPECT_EQ(named(marks, note).texts[0].tint, secondaryTint()) << note;
    }
}

TEST(PermissionSetupFigures, AllOfItStandsInItsHeightFromTopToBottom)
{
    for (const PermissionState& state : kAllStates) {
        double last = 0;
        for (const Mark& mark : marksOf(state)) {
            if (mark.role == MarkRole::text && mark.name != "未授权" && mark.name != "已授权") {
                EXPECT_GE(bounds(mark.shape).y, last) << mark.name;
                last = bounds(mark.shape).y;
            }
            EXPECT_LE(bottom(bounds(mark.shape)), permissionSetupHeight(state)) << mark.name;
        }
        EXPECT_EQ(bottom(bounds(marksOf(state).back().shape)), permissionSetupHeight(state));
    }
}

TEST(PermissionRowMarks, ARowThatIsMissingHasAnEmptyCircle)
{
    const auto marks = permissionRowMarks(row(false), 100, kWidth, kTenPoints);
    const std::vector<SymbolMark> symbols{
        {{38.5, 120, 15, 15}, "keyboard", {SystemColor::orange}}, // in a frame of 28 from 32 on
        {{453, 120, 15, 15}, "circle", secondaryTint(0.5)},
    };
    EXPECT_EQ(symbolsOf(marks), symbols);
    EXPECT_TRUE(std::ranges::all_of(
        marks, [](const Mark& mark) { return mark.fills.empty() || mark.name == "必须"; }));
    EXPECT_EQ(named(marks, "未授权").role, MarkRole::text);
}

TEST(PermissionRowMarks, ARowThatIsGrantedIsGreen)
{
    const auto marks = permissionRowMarks(row(true), 100, kWidth, kTenPoints);
    EXPECT_EQ(marks.front(), boxMark({0, 100, 500, 55}, {SystemColor::green, 0.05}));
    EXPECT_EQ(symbolsOf(marks).back(),
        (SymbolMark{{453, 120, 15, 15}, "checkmark.circle.fill", {SystemColor::green}}));
    EXPECT_EQ(named(marks, "已授权").role, MarkRole::text);
}

TEST(PermissionRowMarks, TheTextsStandInAColumnBehindTheIcon)
{
    const auto marks = permissionRowMarks(row(false), 100, kWidth, kTenPoints);
    const Mark title = named(marks, "辅助功能");
    EXPECT_EQ(title.texts[0].face, (TextFace{TextFamily::system, 13, TextWeight::medium}));
    EXPECT_EQ(title.texts[0].tint, primaryTint());
    EXPECT_EQ(title.texts[0].place.x, 72); // 32, the frame of 28, a gap of 12
    const Mark subtitle = named(marks, "用途");
    EXPECT_EQ(subtitle.texts[0].tint, secondaryTint());
    EXPECT_EQ(subtitle.texts[0].place.x, 72);
    EXPECT_EQ(subtitle.texts[0].place.y, bottom(title.texts[0].place) + 2);
    EXPECT_GE(title.texts[0].place.y, 110);
    EXPECT_LE(bottom(subtitle.texts[0].place), 145);
}

TEST(PermissionRowMarks, WhatIsRequiredHasAWhiteTagOnRed)
{
    const auto marks = permissionRowMarks(row(false), 100, kWidth, kTenPoints);
    const Mark tag = named(marks, "必须");
    EXPECT_EQ(tag.fills, std::vector{Tint{SystemColor::red}});
    EXPECT_EQ(tag.texts[0].face, (TextFace{TextFamily::system, 10, TextWeight::bold}));
    EXPECT_EQ(tag.texts[0].tint, (Tint{kWhite}));
    EXPECT_EQ(tag.texts[0].alignment, TextAlignment::center);
    const Rect box = bounds(tag.shape);
    EXPECT_EQ(box.x, 118); // behind the title of 40
    EXPECT_EQ(box.width, 20 + 2 * 6);
    EXPECT_EQ(box.height, 12.5 + 2 * 2);

    PermissionRow optional = row(false);
    optional.isRequired = false;
    EXPECT_THAT(spoken(permissionRowMarks(optional, 100, kWidth, kTenPoints)),
        ElementsAre("辅助功能", "用途", "未授权"));
}

TEST(SetupActionsTest, WithoutThePermissionTheSettingsAndTheProgramAreShownOrItIsSkipped)
{
    const std::vector<SetupButton> buttons{
        {SetupAction::openSettings, "gearshape.fill", "打开系统设置",
            "请在 隐私与安全性 → 辅助功能 中开启 Quillbrook"},
        {SetupAction::revealProgram, "folder", "在 Finder 中显示 App 位置",
            "如果列表中没有 Quillbrook，点击 + 按钮手动添加"},
    };
    const SetupActions actions = setupActions(kFirstLaunch);
    EXPECT_EQ(actions.buttons, buttons);
    EXPECT_EQ(actions.confirmation, "");
    EXPECT_EQ(actions.skip, "跳过（键盘监控不可用）");
}

TEST(SetupActionsTest, WithThePermissionOneBegins)
{
    const std::vector<SetupButton> buttons{{SetupAction::goOn, "", "开始使用 Quillbrook", ""}};
    for (const PermissionState& state : {kGranted, kGrantedAnew}) {
        const SetupActions actions = setupActions(state);
        EXPECT_EQ(actions.buttons, buttons);
        EXPECT_EQ(actions.confirmation, "辅助功能权限已授权");
        EXPECT_EQ(actions.skip, "");
    }
}

TEST(SetupActionsTest, AnUpdateThatFindsAGrantCanOnlyBeReset)
{
    const std::vector<SetupButton> buttons{
        {SetupAction::resetPermission, "arrow.triangle.2.circlepath", "重置旧授权",
            "点击后将清除旧版授权记录，随后请在\"系统设置\"中重新开启 Quillbrook"}};
    const SetupActions actions = setupActions(kUpdated);
    EXPECT_EQ(actions.buttons, buttons);
    EXPECT_EQ(actions.confirmation, "");
    EXPECT_EQ(actions.skip, "");
}

TEST(SetupActionsTest, WhereAServiceCountsTheButtonsLeadToIt)
{
    PermissionState state = kFirstLaunch;
    state.giver = PermissionGiver::counterService;
    const std::vector<SetupButton> buttons{
        {SetupAction::openSettings, "gearshape.fill", "启用按键计数服务",
            "按键由系统服务 quillbrook-keycounter 计数，它随软件包一起安装"},
        {SetupAction::revealProgram, "folder", "在文件管理器中显示程序位置",
            "如果程序未经安装而直接运行，请先安装 Quillbrook 软件包"},
    };
    EXPECT_EQ(setupActions(state).buttons, buttons);
    EXPECT_EQ(setupActions(state).skip, "跳过（键盘监控不可用）");
    EXPECT_EQ(marksOf(state), marksOf(kFirstLaunch));
    for (PermissionState each : {kGranted, kUpdated, kGrantedAnew}) {
        const auto withSettings = setupActions(each).buttons;
        each.giver = PermissionGiver::counterService;
        EXPECT_EQ(setupActions(each).buttons, withSettings);
    }
}

} // namespace
} // namespace quillbrook
