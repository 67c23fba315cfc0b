#pragma once

#include <QSplitter>

namespace quillbrook {

class Sidebar;

/// The dashboard's two columns with the divider between them, which leaves each its minimum. A
/// window that is too narrow for both takes from the page, which can scroll.
class SplitView final : public QSplitter {
    Q_OBJECT

public:
    static constexpr int kPageMinimum = 560;

    /// Takes both.
    SplitView(Sidebar* sidebar, QWidget* page, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override { return {}; }

protected:
    QSplitterHandle* createHandle() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* page;
};

} // namespace quillbrook
