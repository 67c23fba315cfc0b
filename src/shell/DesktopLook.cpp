#include "shell/DesktopLook.h"

#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"

#include <QApplication>
#include <QLibraryInfo>

namespace quillbrook {

DesktopLook::DesktopLook(DesktopAppearance& appearance)
    : isDarkByDefault(Look::isDark(QApplication::palette()))
{
    installAccessibleViews();
    Look::setCanBlendWindows([&appearance] { return appearance.canBlendWindows(); });
    if (qtTexts.load("qtbase_zh_CN", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&qtTexts);
    }
    wishes = appearance.observe([this](const Appearance& wish) {
        Look::apply(wish.isDark.value_or(isDarkByDefault), wish.accent);
    });
}

DesktopLook::~DesktopLook()
{
    Look::setCanBlendWindows({});
}

} // namespace quillbrook
