#pragma once

#include <QWidget>

namespace quillbrook {

struct Maker;

/// Who made the program, in small type, with the way to their site where they have one.
class MakerLine final : public QWidget {
    Q_OBJECT

public:
    explicit MakerLine(const Maker& maker, QWidget* parent = nullptr);
};

} // namespace quillbrook
