#pragma once

#include "pages/kit/DrawnView.h"

#include <QStringList>

namespace quillbrook {

/// Lines of Chinese as columns, from left to right in the given order.
class VerticalChineseText final : public DrawnView {
    Q_OBJECT

public:
    explicit VerticalChineseText(const QStringList& lines, QWidget* parent = nullptr);

    std::vector<DrawnItem> drawnItems() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF columnRect(qsizetype column) const;

    QStringList lines;
};

} // namespace quillbrook
