#pragma once

#include "pages/figures/AboutFigures.h"
#include "pages/views/ComputerCalendar.h"
#include "platform/BundleValues.h"

namespace quillbrook {

/// What the program's package says now.
inline AboutValues bundleAbout(const Platform& platform)
{
    return aboutValues(platform.bundleValues.infoValue("CFBundleShortVersionString"),
        platform.bundleValues.infoValue("BuildDate"), computerCalendar(platform));
}

} // namespace quillbrook
