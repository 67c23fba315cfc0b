#pragma once

#include <QWidget>

namespace quillbrook {

/// The program's name in the toolbar, with a gloss of it.
class TitleBlock final : public QWidget {
    Q_OBJECT

public:
    explicit TitleBlock(QWidget* parent = nullptr);
};

} // namespace quillbrook
