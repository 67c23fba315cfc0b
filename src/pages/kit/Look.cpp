#include "pages/kit/Look.h"

#include "pages/kit/FormStyle.h"

#include <QApplication>
#include <QPointer>
#include <QStringList>
#include <QStyle>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <variant>

namespace quillbrook::Look {

namespace {

struct Shades {
    QRgb light;
    QRgb dark;
};

/// By the order of `SystemColor`.
constexpr std::array kSystemColors = {
    Shades{0xFF007AFF, 0xFF0A84FF},
    Shades{0xFF28CD41, 0xFF32D74B},
    Shades{0xFFFF9500, 0xFFFF9F0A},
    Shades{0xFFAF52DE, 0xFFBF5AF2},
    Shades{0xFF59ADC4, 0xFF6AC4DC},
    Shades{0xFFFF2D55, 0xFFFF375F},
    Shades{0xFF5856D6, 0xFF5E5CE6},
    Shades{0xFF00C7BE, 0xFF66D4CF},
    Shades{0xFF55BEF0, 0xFF5AC8F5},
    Shades{0xFFFFCC00, 0xFFFFD60A},
    Shades{0xFFFF3B30, 0xFFFF453A},
    Shades{0xFFA2845E, 0xFFAC8E68},
    Shades{0xFF8E8E93, 0xFF98989D},
};

struct Style {
    int pixels;
    QFont::Weight weight;
};

/// By the order of `TextStyle`.
constexpr std::array kStyles = {
    Style{22, QFont::Normal},
    Style{17, QFont::Normal},
    Style{15, QFont::Normal},
    Style{13, QFont::Bold},
    Style{13, QFont::Normal},
    Style{12, QFont::Normal},
    Style{11, QFont::Normal},
    Style{10, QFont::Normal},
    Style{10, QFont::Normal},
    Style{10, QFont::Normal},
};

// Without a Han family of its own a font falls back to Japanese forms on many desktops.
const char* const kSansHan = "Noto Sans CJK SC";
const char* const kSerifHan = "Noto Serif CJK SC";
const char* const kEmoji = "Noto Color Emoji";

// Below this size the slash through the zero of the monospaced face fills it up, and 10:00 reads as
// 18:00. The digits of the Han face have one width too, and a bare zero.
constexpr int kSmallestMonospaced = 12;

// Below this size its thin letters fade.
constexpr int kSmallestHanDigits = 10;

QFont fontOf(const QStringList& families, int pixels, QFont::Weight weight)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting); // one look at every scale
    return font;
}

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// White, or a dark grey on an accent that is too light for it: desktops have yellow ones, too.
QColor textOn(const QColor& accentColor)
{
    constexpr double kLeastContrast = 3;
    const double contrast = 1.05 / (luminance(accentColor) + 0.05);
    return contrast >= kLeastContrast ? QColor(Qt::white) : QColor(0x26, 0x26, 0x26);
}

QPalette paletteFor(bool isDark, QColor accentColor)
{
    const QColor text = isDark ? QColor(255, 255, 255, 217) : QColor(0, 0, 0, 217);
    const QColor secondary = isDark ? QColor(255, 255, 255, 140) : QColor(0, 0, 0, 128);
    const QColor window = isDark ? QColor(0x1E, 0x1E, 0x1E) : QColor(0xEC, 0xEC, 0xEC);
    const QColor control = isDark ? QColor(0x2A, 0x2A, 0x2C) : QColor(0xFF, 0xFF, 0xFF);

    QPalette palette(control, window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, control);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Button, control);
    palette.setColor(QPalette::ToolTipBase, control);
    for (const auto role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::PlaceholderText, secondary);
    palette.setColor(QPalette::Mid, isDark ? QColor(255, 255, 255, 26) : QColor(0, 0, 0, 26));
    palette.setColor(QPalette::Highlight, accentColor);
    palette.setColor(QPalette::HighlightedText, textOn(accentColor));
    palette.setColor(QPalette::Link, accentColor);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, secondary);
    }
    return palette;
}

std::function<bool()>& blendingAnswer()
{
    static std::function<bool()> answer;
    return answer;
}

/// Menus, tooltips and scroll bars are made by Qt itself, so their form is told here once.
QString formOfQtsWidgets(bool isDark)
{
    const QString back = isDark ? "#2A2A2C" : "#FFFFFF";
    const QString edge = isDark ? "#48484A" : "#C4C4C8";
    const QString text = isDark ? "#DDDDDD" : "#262626";
    const QString disabled = isDark ? "#98989D" : "#6E6E73";
    return QStringLiteral("QToolTip { background: %1; color: %3; border: 1px solid %2;"
                          " border-radius: %5px; padding: 3px 6px; }"
                          "QMenu { background: %1; color: %3; border: 1px solid %2;"
                          " border-radius: %6px; padding: 5px; }"
                          "QMenu::item { padding: 4px 22px 4px 12px; border-radius: 4px; }"
                          "QMenu::item:disabled { color: %4; }"
                          "QMenu::item:selected:enabled { background: palette(highlight);"
                          " color: palette(highlighted-text); }"
                          "QMenu::separator { height: 1px; background: %2; margin: 5px 10px; }"
                          "QScrollBar:vertical { width: 9px; background: transparent; }"
                          "QScrollBar:horizontal { height: 9px; background: transparent; }"
                          "QScrollBar::handle { background: %2; border-radius: 3px; margin: 2px; }"
                          "QScrollBar::handle:vertical { min-height: 32px; }"
                          "QScrollBar::handle:horizontal { min-width: 32px; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"
                          "QAbstractScrollArea::corner { background: transparent; }")
        .arg(back, edge, text, disabled)
        .arg(FormStyle::kToolTipRadius)
        .arg(FormStyle::kMenuRadius);
}

QColor plainColor(SystemColor name, const QPalette& palette)
{
    return color(name, palette);
}

QColor plainColor(Color color, const QPalette&)
{
    return toQColor(color);
}

QColor plainColor(InterfaceColor name, const QPalette& palette)
{
    switch (name) {
    case InterfaceColor::primaryText:
        return primaryText(palette);
    case InterfaceColor::secondaryText:
        return secondaryText(palette);
    case InterfaceColor::separator:
        return separator(palette);
    case InterfaceColor::windowBackground:
        return windowBackground(palette);
    case InterfaceColor::controlBackground:
        return controlBackground(palette);
    case InterfaceColor::accent:
        return accent(palette);
    }
    return {};
}

QFont::Weight weightOf(TextWeight weight)
{
    switch (weight) {
    case TextWeight::regular:
        return QFont::Normal;
    case TextWeight::medium:
        return QFont::Medium;
    case TextWeight::semibold:
        return QFont::DemiBold;
    case TextWeight::bold:
        return QFont::Bold;
    case TextWeight::black:
        return QFont::Black;
    }
    return QFont::Normal;
}

} // namespace

void apply(bool isDark, std::optional<Color> accent)
{
    const Shades blue = kSystemColors[static_cast<std::size_t>(SystemColor::blue)];
    const QColor accentColor
        = accent ? toQColor(*accent) : QColor::fromRgb(isDark ? blue.dark : blue.light);
    static QPointer<QStyle> style; // the application's, which owns it
    if (!style) {
        style = new FormStyle;
        QApplication::setStyle(style);
    }
    QApplication::setFont(font(TextStyle::body));
    QApplication::setPalette(paletteFor(isDark, accentColor));
    qApp->setStyleSheet(formOfQtsWidgets(isDark));
}

void setCanBlendWindows(std::function<bool()> answer)
{
    blendingAnswer() = std::move(answer);
}

bool canBlendWindows()
{
    return !blendingAnswer() || blendingAnswer()();
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor color(SystemColor name, const QPalette& palette)
{
    const Shades shades = kSystemColors[static_cast<std::size_t>(name)];
    return QColor::fromRgb(isDark(palette) ? shades.dark : shades.light);
}

QColor color(const Tint& tint, const QPalette& palette)
{
    return faded(
        std::visit([&](auto name) { return plainColor(name, palette); }, tint.color), tint.opacity);
}

QColor toQColor(Color color)
{
    return {color.red, color.green, color.blue};
}

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

PaletteColor following(const Tint& tint)
{
    return [tint](const QPalette& palette) { return color(tint, palette); };
}

QColor windowBackground(const QPalette& palette)
{
    return palette.color(QPalette::Window);
}

QColor controlBackground(const QPalette& palette)
{
    return palette.color(QPalette::Base);
}

QColor primaryText(const QPalette& palette)
{
    return palette.color(QPalette::WindowText);
}

QColor secondaryText(const QPalette& palette)
{
    return palette.color(QPalette::PlaceholderText);
}

QColor separator(const QPalette& palette)
{
    return palette.color(QPalette::Mid);
}

QColor accent(const QPalette& palette)
{
    return palette.color(QPalette::Highlight);
}

QColor textOnAccent(const QPalette& palette)
{
    return palette.color(QPalette::HighlightedText);
}

QColor link(const QPalette& palette)
{
    constexpr double kShareOfAccent = 0.7;
    const QColor own = accent(palette);
    const QColor text = isDark(palette) ? Qt::white : Qt::black;
    const auto mixed = [&](int one, int other) {
        return static_cast<int>(std::lround(kShareOfAccent * one + (1 - kShareOfAccent) * other));
    };
    return {mixed(own.red(), text.red()), mixed(own.green(), text.green()),
        mixed(own.blue(), text.blue())};
}

QFont font(TextStyle style, QFont::Weight weight)
{
    const Style set = kStyles[static_cast<std::size_t>(style)];
    return systemFont(set.pixels, std::max(set.weight, weight));
}

QFont systemFont(int pixels, QFont::Weight weight)
{
    return fontOf({"Inter", kSansHan, kEmoji}, pixels, weight);
}

QFont serifFont(int pixels, QFont::Weight weight)
{
    return fontOf({"Vollkorn", kSerifHan, kEmoji}, pixels, weight);
}

QFont monospacedFont(int pixels, QFont::Weight weight)
{
    if (pixels < kSmallestHanDigits) {
        return systemFont(pixels, std::max(weight, QFont::Medium));
    }
    if (pixels < kSmallestMonospaced) {
        return fontOf({kSansHan, kEmoji}, pixels, weight);
    }
    return fontOf({"JetBrains Mono", kSansHan, kEmoji}, pixels, weight);
}

QFont monospacedFont(TextStyle style)
{
    const Style set = kStyles[static_cast<std::size_t>(style)];
    return monospacedFont(set.pixels, set.weight);
}

QFont codeFont(TextStyle style)
{
    const Style set = kStyles[static_cast<std::size_t>(style)];
    return fontOf({"JetBrains Mono", kSansHan, kEmoji}, set.pixels, set.weight);
}

QFont font(const TextFace& face)
{
    const QFont::Weight weight = weightOf(face.weight);
    switch (face.family) {
    case TextFamily::system:
        return systemFont(face.pixels, weight);
    case TextFamily::serif:
        return serifFont(face.pixels, weight);
    case TextFamily::monospaced:
        return monospacedFont(face.pixels, weight);
    }
    return {};
}

} // namespace quillbrook::Look
