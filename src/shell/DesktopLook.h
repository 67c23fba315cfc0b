#pragma once

#include "platform/DesktopAppearance.h"

#include <QTranslator>

namespace quillbrook {

/// Makes the windows look as the desktop wants, light or dark, from now on and through its changes,
/// and lets screen readers find what is drawn. What Qt itself says, in its file dialogue, is in
/// Chinese like the rest where its translations are installed. One for the process; needs the
/// application object.
class DesktopLook {
public:
    explicit DesktopLook(DesktopAppearance& appearance);
    ~DesktopLook();

    DesktopLook(const DesktopLook&) = delete;
    DesktopLook& operator=(const DesktopLook&) = delete;

private:
    bool isDarkByDefault; // what the desktop's own palette says, for want of a wish
    QTranslator qtTexts{};
    Subscription wishes;
};

} // namespace quillbrook
