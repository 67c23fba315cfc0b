#pragma once

#include "pages/views/Page.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/DataProvider.h"
#include "support/Elements.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QAbstractButton>

#include <algorithm>

namespace quillbrook {

/// A machine with a provider, on which pages can be made.
class PagesFixture : public testing::Test {
protected:
    static constexpr double kNow = 1767225600; // 2026-01-01 08:00 in UTC+8

    PageTools tools() { return {.provider = provider, .platform = platform}; }

    /// A page of the size that the smallest window leaves it, on screen with `data`.
    template <typename PageType>
    std::unique_ptr<PageType> shownPage(const DashboardData& data)
    {
        auto page = std::make_unique<PageType>(tools());
        page->resize(600, 500);
        static_cast<QWidget&>(*page).show();
        page->show(data);
        QCoreApplication::processEvents();
        return page;
    }

    /// The first button of that text or accessible name; the test ends without one.
    static QAbstractButton& button(const QWidget& page, const QString& name)
    {
        const auto buttons = page.findChildren<QAbstractButton*>();
        const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const auto* each) {
            return each->text() == name || each->accessibleName() == name;
        });
        if (found == buttons.end()) {
            ADD_FAILURE() << "no button " << name.toStdString();
            std::abort();
        }
        return **found;
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kNow};
    Platform platform = machine.platform();
    DataProvider provider{platform};
};

} // namespace quillbrook
