#pragma once

#include <QLayout>
#include <QList>

#include <cstdint>

namespace quillbrook {

/// Places its items in rows from left to right, each at its size hint and at half the height of its
/// row, and begins a new row where the width ends.
class FlowLayout final : public QLayout {
public:
    enum class Rows : std::uint8_t { fromTheLeft, centered };

    explicit FlowLayout(int spacing, QWidget* parent = nullptr);
    FlowLayout(int spacing, Rows rows, QWidget* parent = nullptr);
    ~FlowLayout() override;

    FlowLayout(const FlowLayout&) = delete;
    FlowLayout& operator=(const FlowLayout&) = delete;

    /// Removes and destroys the widgets in it.
    void clear();

    void addItem(QLayoutItem* item) override { items.append(item); }
    int count() const override { return static_cast<int>(items.size()); }
    QLayoutItem* itemAt(int index) const override { return items.value(index); }
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    QList<QRect> placesFor(int width) const;

    Rows rows = Rows::fromTheLeft;
    QList<QLayoutItem*> items{};
};

} // namespace quillbrook
