#pragma once

#include <QHash>
#include <QLabel>

namespace quillbrook {

/// A text in the secondary colour that breaks into lines. It lays its text out once for each width:
/// a layout asks for the same height a dozen times while a page opens.
class WrappedLabel final : public QLabel {
    Q_OBJECT

public:
    WrappedLabel(const QString& text, const QFont& font, QWidget* parent = nullptr);

    /// -1 where the text doesn't break, as any widget without a height for its width says.
    int heightForWidth(int width) const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    mutable QString measuredText{};
    mutable QHash<int, int> heights{}; // of `measuredText`, by width
};

} // namespace quillbrook
