#pragma once

#include "base/SystemColor.h"
#include "pages/kit/Panel.h"

#include <QStringList>

namespace quillbrook {

/// A box with a breath of its colour that explains something: a headline with a symbol in the
/// colour, and lines in small type.
class NoteBox final : public Panel {
    Q_OBJECT

public:
    NoteBox(SystemColor color, const QString& headline, const QStringList& lines,
        QWidget* parent = nullptr);
};

} // namespace quillbrook
