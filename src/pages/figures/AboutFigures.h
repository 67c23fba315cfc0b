#pragma once

#include "base/SystemColor.h"
#include "base/SystemKind.h"
#include "pages/figures/LocalCalendar.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillbrook {

/// What the about surfaces say of the program that runs.
struct AboutValues {
    std::string version{};
    std::string buildDate{}; // "yyyy-MM-dd"

    bool operator==(const AboutValues&) const = default;
};

/// The values of the program's package, or what stands in their place where it has none: a version
/// of its own, which is not the launch's, and today's date by the computer's calendar.
AboutValues aboutValues(const std::optional<std::string>& version,
    const std::optional<std::string>& buildDate, const LocalCalendar& calendar);

/// "v1.2.0".
std::string versionText(const AboutValues& values);

/// "构建于 2026-01-31".
std::string buildDateText(const AboutValues& values);

/// Who makes the program, and where more is to be read. All that is said of them stands here.
struct Maker {
    std::string_view credit{};
    std::string_view site{}; // an address; empty for none, and then no link leads there
    std::string_view privacyPage{}; // a document that the program carries
};

inline constexpr Maker kMaker{
    .credit = "Quillbrook 作者 · MIT 许可证", .privacyPage = ":/privacy_quillbrook"};

/// Something that the program does.
struct Feature {
    std::string_view symbol{};
    SystemColor color = SystemColor::blue;
    std::string_view title{};
    std::string_view detail{};
};

inline constexpr auto kFeatures = std::to_array<Feature>({
    {"app.badge", SystemColor::blue, "前台应用追踪", "自动记录每个应用的使用时长和切换次数"},
    {"cpu", SystemColor::green, "系统资源监控", "CPU / 内存 / Swap / 负载 实时采集，每 60 秒快照"},
    {"keyboard", SystemColor::purple, "键盘活动统计",
        "击键次数 & token 消耗估算（需 keylog 采集）"},
    {"exclamationmark.triangle", SystemColor::orange, "智能告警",
        "高负载 / 内存不足 / 图形异常时自动推送通知"},
    {"chart.bar", SystemColor::teal, "可视化报告", "时间线 / 条形图 / 告警历史 / 键盘活动"},
    {"chart.bar.doc.horizontal", SystemColor::indigo, "习惯追踪",
        "应用使用分类统计、时长占比与时段分析"},
    {"heart.fill", SystemColor::red, "iLife 生命进度",
        "年度进度可视化 + 生命格子（基于上海人均寿命 84.11 岁）"},
});

/// What the program is made of on a system, in a line and piece by piece.
struct Technology {
    std::string_view line{};
    std::span<const std::string_view> tags{};
};

Technology technologyOn(SystemKind system);

} // namespace quillbrook
