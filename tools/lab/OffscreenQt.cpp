#include "lab/OffscreenQt.h"

#include "lab/Arguments.h"
#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"
#include "platform/qt/SystemClock.h"

#include <QFile>
#include <QPixmap>

namespace quillbrook::lab {

OffscreenQt::OffscreenQt(const Arguments& arguments)
{
    const double scale = arguments.number("--scale").value_or(1);
    if (scale < 0.5 || scale > 8) {
        arguments.reject("--scale", "the scale must lie between 0.5 and 8");
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false"); // it warns of all that it can't do
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    application.emplace(count, values.data());
    installAccessibleViews();
    Look::apply(arguments.flag("--dark"), std::nullopt);
}

double nowOf(const Arguments& arguments)
{
    return arguments.number("--now").value_or(SystemClock().now());
}

void writePicture(const Arguments& arguments, const QPixmap& picture)
{
    const auto path = arguments.option("--png");
    if (path && !picture.save(QString::fromStdString(*path), "PNG")) {
        arguments.reject("--png", "'" + *path + "' can't be written");
    }
}

void writeText(const Arguments& arguments, std::string_view option, const QByteArray& text)
{
    const auto path = arguments.option(option);
    if (!path) {
        return;
    }
    QFile file(QString::fromStdString(*path));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        arguments.reject(option, "'" + *path + "' can't be written");
    }
}

} // namespace quillbrook::lab
