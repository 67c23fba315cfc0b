#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&count, values);
    const QApplication application(count, values);
    quillbrook::installAccessibleViews();
    quillbrook::Look::apply(false, std::nullopt);
    return RUN_ALL_TESTS();
}
