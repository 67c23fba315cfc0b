#include "pages/kit/SegmentedPicker.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kHeight = 26;
constexpr int kInset = 2;
constexpr double kRadius = 6;

class Segment final : public QAbstractButton, public Spoken {
public:
    Segment(const QString& label, QWidget* parent) : QAbstractButton(parent)
    {
        setText(label);
        setAccessibleName(label);
        setCheckable(true);
        setAttribute(Qt::WA_Hover);
    }

    QAccessible::Role accessibleRole() const override { return QAccessible::PageTab; }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
            event->ignore(); // the picker moves the choice
        } else {
            QAbstractButton::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isChecked()) {
            const bool isDark = Look::isDark(palette());
            painter.setPen(QPen(Look::separator(palette()), 1));
            painter.setBrush(isDark ? QColor(0x63, 0x63, 0x66) : QColor(Qt::white));
            painter.drawRoundedRect(
                QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 1, kRadius - 1);
        }
        painter.setFont(
            Look::font(TextStyle::callout, isChecked() ? QFont::DemiBold : QFont::Normal));
        painter.setPen(Look::primaryText(palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
        drawFocusRing(painter, *this, rect(), kRadius - 1);
    }
};

} // namespace

SegmentedPicker::SegmentedPicker(
    const QString& name, const QStringList& labels, int width, QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(name);
    for (const QString& label : labels) {
        auto* segment = new Segment(label, this);
        const int index = static_cast<int>(segments.size());
        connect(segment, &QAbstractButton::clicked, this, [this, index] { pick(index); });
        segments.append(segment);
    }
    setFixedSize(width, kHeight);
    setCurrent(0);
}

void SegmentedPicker::setCurrent(int index)
{
    const bool isNew = std::exchange(chosen, index) != index;
    for (int i = 0; i < segments.size(); ++i) {
        segments[i]->setChecked(i == index);
        // One stop of the Tab key; the arrow keys go on from there.
        segments[i]->setFocusPolicy(i == index ? Qt::TabFocus : Qt::NoFocus);
    }
    if (isNew) {
        QAccessibleEvent selection(segments[index], QAccessible::Selection);
        QAccessible::updateAccessibility(&selection);
    }
    update();
}

void SegmentedPicker::pick(int index)
{
    const bool isNew = index != chosen;
    setCurrent(index);
    if (isNew) {
        emit picked(index);
    }
}

QString SegmentedPicker::accessibleValue() const
{
    return segments[chosen]->text();
}

QSize SegmentedPicker::sizeHint() const
{
    return size();
}

void SegmentedPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Look::faded(Look::primaryText(palette()), 0.08));
    painter.drawRoundedRect(rect(), kRadius, kRadius);
    // A hair between two segments of which neither is chosen.
    painter.setPen(Look::separator(palette()));
    for (int i = 1; i < segments.size(); ++i) {
        if (i != chosen && i - 1 != chosen) {
            const int x = segments[i]->x();
            painter.drawLine(x, kHeight / 4, x, kHeight * 3 / 4);
        }
    }
}

void SegmentedPicker::resizeEvent(QResizeEvent*)
{
    const int count = static_cast<int>(segments.size());
    const int inner = width() - 2 * kInset;
    for (int i = 0; i < count; ++i) {
        const int from = kInset + inner * i / count;
        const int to = kInset + inner * (i + 1) / count;
        segments[i]->setGeometry(from, kInset, to - from, kHeight - 2 * kInset);
    }
}

void SegmentedPicker::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    const int next = chosen + step;
    if (step == 0 || next < 0 || next >= segments.size()) {
        QWidget::keyPressEvent(event);
        return;
    }
    segments[next]->setFocus(Qt::TabFocusReason);
    pick(next);
}

} // namespace quillbrook
