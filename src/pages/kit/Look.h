#pragma once

#include "base/Color.h"
#include "base/SystemColor.h"
#include "pages/marks/TextFace.h"
#include "pages/marks/Tint.h"

#include <QColor>
#include <QFont>
#include <QPalette>

#include <cstdint>
#include <functional>
#include <optional>

namespace quillbrook {

/// The named text styles of the interface.
enum class TextStyle : std::uint8_t {
    title,
    title2,
    title3,
    headline, ///< bold
    body,
    callout,
    subheadline,
    caption,
    caption2,
    footnote,
};

/// A colour that is asked for at each drawing, as it may change with the palette.
using PaletteColor = std::function<QColor(const QPalette&)>;

/// Colours and fonts. What a colour looks like follows from the palette of the widget that asks,
/// so that a change of the application's palette reaches everything that is drawn. Main thread
/// only.
namespace Look {

/// Gives the application the light or the dark palette, its font and the form of its menus,
/// tooltips and scroll bars. `accent` is the desktop's accent colour, empty where it tells none.
/// Again at each change of the desktop's setting.
void apply(bool isDark, std::optional<Color> accent);

bool isDark(const QPalette& palette);

/// Whether a window may be partly transparent at the moment. Where `answer` says no, popovers,
/// menus and tooltips are cut out without a shadow. Unset, they may.
void setCanBlendWindows(std::function<bool()> answer);
bool canBlendWindows();

QColor color(SystemColor name, const QPalette& palette);
QColor color(const Tint& tint, const QPalette& palette);
QColor toQColor(Color color);
/// `color` at an opacity from 0 to 1, which multiplies its own.
QColor faded(QColor color, double opacity);

/// The same as a colour that follows the palette.
PaletteColor following(const Tint& tint);

QColor windowBackground(const QPalette& palette);
QColor controlBackground(const QPalette& palette);
QColor primaryText(const QPalette& palette);
QColor secondaryText(const QPalette& palette);
QColor separator(const QPalette& palette);
QColor accent(const QPalette& palette);
QColor textOnAccent(const QPalette& palette);
/// The accent colour, drawn towards that of the text, so that small letters can be read in it.
QColor link(const QPalette& palette);

QFont font(TextStyle style, QFont::Weight weight = QFont::Normal);
/// The interface's font. Sizes are device-independent pixels here and below.
QFont systemFont(int pixels, QFont::Weight weight = QFont::Normal);
QFont serifFont(int pixels, QFont::Weight weight = QFont::Normal);
/// All digits have one width. Below 10 pixels, where letters of one width close up, the
/// interface's font stands in, a little stronger.
QFont monospacedFont(int pixels, QFont::Weight weight = QFont::Normal);
QFont monospacedFont(TextStyle style);

/// Monospaced in its letters too, at every size: for names, whereas small figures take the above.
QFont codeFont(TextStyle style);
QFont font(const TextFace& face);

} // namespace Look

} // namespace quillbrook
