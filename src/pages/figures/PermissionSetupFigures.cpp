#include "pages/figures/PermissionSetupFigures.h"

#include <iterator>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

// The head.
constexpr double kTop = 36;
constexpr double kHeadSymbol = 52;
constexpr double kUnderHeadSymbol = 12;
constexpr double kUnderTitle = 6;
constexpr TextFace kTitleFace{TextFamily::system, 17, TextWeight::bold};
constexpr TextFace kSubtitleFace{TextFamily::system, 11};

// The parts under it.
constexpr double kPartSpacing = 20;
constexpr double kNoteSpacing = 10;
constexpr double kSidePadding = 32;
constexpr double kLineSymbol = 13;
constexpr double kLineHeight = 16;
constexpr TextFace kLineFace{TextFamily::system, 11};

// The row.
constexpr double kRowPadding = 10;
constexpr double kRowSpacing = 12;
constexpr double kIconFrame = 28;
constexpr double kRowSymbol = 15;
constexpr double kTextSpacing = 2;
constexpr double kGrantedOpacity = 0.05;
constexpr double kMissingOpacity = 0.5;
constexpr TextFace kNameFace{TextFamily::system, 13, TextWeight::medium};
constexpr double kBehindName = 6;
constexpr TextFace kTagFace{TextFamily::system, 10, TextWeight::bold};
constexpr double kTagSidePadding = 6;
constexpr double kTagPadding = 2; // above and below
constexpr double kTagRadius = 4;
constexpr double kNameHeight = lineHeight(kTagFace) + 2 * kTagPadding;

struct Head {
    std::string_view symbol;
    Tint tint;
    std::string_view title;
    std::string_view subtitle;
};

/// The system reports a grant, which an earlier version may have been given.
bool isUpdated(const PermissionState& state)
{
    return state.isNewVersion && state.isAccessibilityGranted;
}

Head headOf(const PermissionState& state)
{
    if (isUpdated(state)) {
        return {"arrow.triangle.2.circlepath.circle.fill", {SystemColor::orange},
            "检测到应用已更新", "新版应用可能需要重新授权辅助功能权限"};
    }
    return {"shield.lefthalf.filled.badge.checkmark", {InterfaceColor::accent},
        "欢迎使用 Quillbrook", "首次启动需要配置必要权限"};
}

/// A symbol in the middle of `place`, for the eye alone.
Mark symbolMark(Rect place, double size, std::string_view symbol, Tint tint)
{
    const Point middle = center(place);
    return {.shape = Box{place},
        .symbols = {{.place = {middle.x - size / 2, middle.y - size / 2, size, size},
            .symbol = std::string(symbol),
            .tint = tint}}};
}

/// Adds the head, and gives the place under it.
double addHead(std::vector<Mark>& marks, const Head& head, double width)
{
    const auto line = [&](double top, std::string_view text, const TextFace& face, Tint tint) {
        return textMark({.place = {kSidePadding, top, width - 2 * kSidePadding, lineHeight(face)},
            .text = std::string(text),
            .face = face,
            .tint = tint,
            .alignment = TextAlignment::center});
    };
    marks.push_back(symbolMark({0, kTop, width, kHeadSymbol}, kHeadSymbol, head.symbol, head.tint));
    double top = kTop + kHeadSymbol + kUnderHeadSymbol;
    marks.push_back(line(top, head.title, kTitleFace, primaryTint()));
    top += lineHeight(kTitleFace) + kUnderTitle;
    marks.push_back(line(top, head.subtitle, kSubtitleFace, secondaryTint()));
    return top + lineHeight(kSubtitleFace);
}

struct Line {
    std::string_view symbol;
    Tint symbolTint;
    std::string_view text;
    Tint textTint;
};

/// A symbol and a text, below those of the row.
void addLine(std::vector<Mark>& marks, const Line& line, double top, double width)
{
    const double left = kSidePadding + (kIconFrame - kLineSymbol) / 2;
    marks.push_back(symbolMark(
        {left, top, kLineSymbol, kLineHeight}, kLineSymbol, line.symbol, line.symbolTint));
    const double textLeft = kSidePadding + kIconFrame + kRowSpacing;
    marks.push_back(
        textMark({.place = {textLeft, top, width - kSidePadding - textLeft, kLineHeight},
            .text = std::string(line.text),
            .face = kLineFace,
            .tint = line.textTint}));
}

Mark tagMark(Point place, const TextWidth& textWidth)
{
    const std::string text = "必须";
    const Rect box{place.x, place.y, textWidth(text, kTagFace) + 2 * kTagSidePadding, kNameHeight};
    Mark tag = boxMark(box, {SystemColor::red}, kTagRadius);
    tag.texts.push_back({.place = box,
        .text = text,
        .face = kTagFace,
        .tint = {kWhite},
        .alignment = TextAlignment::center});
    tag.role = MarkRole::text;
    tag.name = text;
    return tag;
}

/// Whether the permission is there, at the end of the row.
Mark stateMark(bool isGranted, Rect inside)
{
    Mark mark = symbolMark({right(inside) - kRowSymbol, inside.y, kRowSymbol, inside.height},
        kRowSymbol, isGranted ? "checkmark.circle.fill" : "circle",
        isGranted ? Tint{SystemColor::green} : secondaryTint(kMissingOpacity));
    mark.role = MarkRole::text;
    mark.name = isGranted ? "已授权" : "未授权";
    return mark;
}

std::vector<SetupButton> waysToThePermission(PermissionGiver giver)
{
    if (giver == PermissionGiver::counterService) {
        return {{SetupAction::openSettings, "gearshape.fill", "启用按键计数服务",
                    "按键由系统服务 quillbrook-keycounter 计数，它随软件包一起安装"},
            {SetupAction::revealProgram, "folder", "在文件管理器中显示程序位置",
                "如果程序未经安装而直接运行，请先安装 Quillbrook 软件包"}};
    }
    return {{SetupAction::openSettings, "gearshape.fill", "打开系统设置",
                "请在 隐私与安全性 → 辅助功能 中开启 Quillbrook"},
        {SetupAction::revealProgram, "folder", "在 Finder 中显示 App 位置",
            "如果列表中没有 Quillbrook，点击 + 按钮手动添加"}};
}

} // namespace

std::vector<Mark> permissionRowMarks(
    const PermissionRow& row, double top, double width, const TextWidth& textWidth)
{
    const Rect whole{0, top, width, kPermissionRowHeight};
    const Rect inside = inset(whole, kSidePadding, kRowPadding);
    std::vector<Mark> marks;
    if (row.isGranted) {
        marks.push_back(boxMark(whole, {SystemColor::green, kGrantedOpacity}));
    }
    marks.push_back(symbolMark(
        {inside.x, inside.y, kIconFrame, inside.height}, kRowSymbol, row.icon, {row.iconColor}));

    const double left = inside.x + kIconFrame + kRowSpacing;
    const double room = right(inside) - kRowSymbol - kRowSpacing - left;
    const double textHeight = kNameHeight + kTextSpacing + lineHeight(kSubtitleFace);
    const double textTop = center(inside).y - textHeight / 2;
    const double nameWidth = textWidth(row.title, kNameFace);
    marks.push_back(textMark(
        {.place = {left, textTop, nameWidth, kNameHeight}, .text = row.title, .face = kNameFace}));
    if (row.isRequired) {
        marks.push_back(tagMark({left + nameWidth + kBehindName, textTop}, textWidth));
    }
    marks.push_back(textMark(
        {.place = {left, textTop + kNameHeight + kTextSpacing, room, lineHeight(kSubtitleFace)},
            .text = row.subtitle,
            .face = kSubtitleFace,
            .tint = secondaryTint()}));
    marks.push_back(stateMark(row.isGranted, inside));
    return marks;
}

std::vector<Mark> permissionSetupMarks(
    const PermissionState& state, double width, const TextWidth& textWidth)
{
    std::vector<Mark> marks;
    double top = addHead(marks, headOf(state), width) + kPartSpacing;
    if (isUpdated(state)) {
        addLine(marks,
            {"exclamationmark.triangle.fill", {SystemColor::orange},
                "系统显示已授权，但版本更新后旧授权可能失效", {SystemColor::orange}},
            top, width);
        top += kLineHeight + kPartSpacing;
    }
    auto row = permissionRowMarks({.icon = "keyboard",
                                      .iconColor = SystemColor::orange,
                                      .title = "辅助功能",
                                      .subtitle = "用于键盘击键监控，统计输入数据",
                                      .isRequired = true,
                                      .isGranted = state.isAccessibilityGranted},
        top, width, textWidth);
    marks.insert(
        marks.end(), std::make_move_iterator(row.begin()), std::make_move_iterator(row.end()));
    top += kPermissionRowHeight + kPartSpacing;
    addLine(marks,
        {"info.circle.fill", {SystemColor::blue}, "仅需要辅助功能权限，不需要输入监控或屏幕录制",
            secondaryTint()},
        top, width);
    top += kLineHeight + kNoteSpacing;
    addLine(marks,
        {"lock.shield.fill", {SystemColor::green}, "所有击键数据仅存储在本地，绝不外传",
            secondaryTint()},
        top, width);
    return marks;
}

double permissionSetupHeight(const PermissionState& state)
{
    const double head = kTop + kHeadSymbol + kUnderHeadSymbol + lineHeight(kTitleFace) + kUnderTitle
        + lineHeight(kSubtitleFace);
    const double warning = isUpdated(state) ? kPartSpacing + kLineHeight : 0;
    const double notes = 2 * kLineHeight + kNoteSpacing;
    return head + warning + kPartSpacing + kPermissionRowHeight + kPartSpacing + notes;
}

SetupActions setupActions(const PermissionState& state)
{
    if (isUpdated(state) && !state.didResetTCC) {
        return {
            .buttons = {{SetupAction::resetPermission, "arrow.triangle.2.circlepath", "重置旧授权",
                "点击后将清除旧版授权记录，随后请在\"系统设置\"中重新开启 Quillbrook"}}};
    }
    if (!state.isAccessibilityGranted) {
        return {.buttons = waysToThePermission(state.giver), .skip = "跳过（键盘监控不可用）"};
    }
    return {.confirmation = "辅助功能权限已授权",
        .buttons = {{SetupAction::goOn, "", "开始使用 Quillbrook", ""}}};
}

} // namespace quillbrook
