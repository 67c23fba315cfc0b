#include "pages/views/PlaceholderPage.h"

#include "pages/kit/EmptyState.h"
#include "pages/views/PageTable.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

namespace quillbrook {

PlaceholderPage::PlaceholderPage(NavTab tab, QWidget* parent) : Page({}, parent)
{
    column()->addWidget(
        new EmptyState(toQString(pageOf(tab).symbol), toQString(rawValue(tab)), QString()));
}

} // namespace quillbrook
