#include "pages/kit/Spinner.h"

#include "pages/kit/Look.h"

#include <QPainter>

#include <chrono>

namespace quillbrook {

namespace {

constexpr int kSpokes = 8;
constexpr int kSize = 20;

} // namespace

Spinner::Spinner(QWidget* parent) : QWidget(parent)
{
    setFixedSize(kSize, kSize);
    timer.setInterval(std::chrono::milliseconds(100));
    connect(&timer, &QTimer::timeout, this, [this] {
        turn = (turn + 1) % kSpokes;
        update();
    });
}

void Spinner::showEvent(QShowEvent*)
{
    timer.start();
}

void Spinner::hideEvent(QHideEvent*)
{
    timer.stop();
}

void Spinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(kSize / 2.0, kSize / 2.0);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int age = (turn - spoke + kSpokes) % kSpokes;
        const QColor color
            = Look::faded(Look::primaryText(palette()), 1 - age / static_cast<double>(kSpokes));
        painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * spoke / kSpokes);
        painter.drawLine(QPointF(0, -5), QPointF(0, -9));
        painter.restore();
    }
}

} // namespace quillbrook
