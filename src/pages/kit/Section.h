#pragma once

#include "pages/kit/Panel.h"

#include <QString>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace quillbrook {

/// How a section is laid out, and what it says while it has nothing to show.
struct SectionForm {
    PanelForm panel{};
    int spacing = 12; // between headline, note and content
    QString emptyText = "暂无数据";
    int emptyHeight = 120; // of the place of that text, at least
};

/// A part of a page: a headline, and under it the content, or its empty text in the content's
/// place.
class Section final : public Panel {
    Q_OBJECT

public:
    /// Without a headline where that is empty. Has nothing to show at first.
    Section(const QString& headline, const SectionForm& form, QWidget* parent = nullptr);

    /// Puts a widget at the right end of the headline.
    void addToHead(QWidget* widget);
    /// Puts a line in small type between the headline and the content.
    void addNote(const QString& text);

    QVBoxLayout& content() { return *column; }

    void setEmpty(bool isEmpty);

private:
    QHBoxLayout* head;
    QVBoxLayout* notes;
    QLabel* nothing;
    QWidget* inside;
    QVBoxLayout* column;
};

} // namespace quillbrook
