#pragma once

#include "pages/kit/Panel.h"

class QLineEdit;

namespace quillbrook {

/// A rounded field for what is sought: a magnifying glass, the text, and a button that empties it
/// while there is any.
class SearchField final : public Panel {
    Q_OBJECT

public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);

signals:
    void textChanged(const QString& text);
    /// The arrow key to what was found.
    void leftDownwards();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QLineEdit* editor;
};

} // namespace quillbrook
