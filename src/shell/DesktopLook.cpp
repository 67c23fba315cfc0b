#include "shell/DesktopLook.h"

#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"

#include <QApplication>
#include <QLibraryInfo>

namespace quillbrook {

DesktopLook::DesktopLook()
    : isDarkByDefault(Look::isDark(QApplication::palette()))
    , portal([this](const PortalAppearance::Appearance& appearance) {
        Look::apply(appearance.isDark.value_or(isDarkByDefault), appearance.accent);
    })
{
    installAccessibleViews();
    Look::apply(isDarkByDefault, std::nullopt);
    if (qtTexts.load("qtbase_zh_CN", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&qtTexts);
    }
}

} // namespace quillbrook
