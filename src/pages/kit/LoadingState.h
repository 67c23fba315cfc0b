#pragma once

#include <QWidget>

namespace quillbrook {

/// A turning wheel with "加载中..." under it, in the middle of the column.
class LoadingState final : public QWidget {
    Q_OBJECT

public:
    explicit LoadingState(QWidget* parent = nullptr);
};

} // namespace quillbrook
