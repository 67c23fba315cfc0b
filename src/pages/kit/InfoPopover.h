#pragma once

#include "base/SystemColor.h"
#include "pages/kit/Look.h"
#include "pages/kit/Popover.h"

#include <QString>

namespace quillbrook {

/// How an information popover is set.
struct InfoForm {
    int width = 380; // of the popover's body
    int spacing = 14; // between its parts
    TextStyle nameStyle = TextStyle::subheadline;
    TextStyle detailStyle = TextStyle::caption;
    int behindSymbol = 6;
    int nameWidth = 0; // at least, so that values stand in line
    bool isDetailUnderName = false; // else it begins under the symbol
};

/// One thing that is explained.
struct InfoEntry {
    QString symbol{}; // empty for none
    SystemColor color = SystemColor::blue; // of the symbol
    QString name{};
    QString value{}; // on the name's line, empty for none
    QString detail{}; // under it
};

/// A popover that explains: headlines, things with a symbol, notes and dividers, one under the
/// other in the order in which they were added. Screen readers call it by its first headline.
class InfoPopover final : public Popover {
    Q_OBJECT

public:
    InfoPopover(const InfoForm& form, QWidget* anchor);

    /// `below` is added to the spacing under it.
    void addHeadline(const QString& text, int below = 0);
    void addEntry(const InfoEntry& entry);
    /// `below` is added to the spacing under it.
    void addDivider(int below = 0);
    /// A line or paragraph in the style of the details.
    void addNote(const QString& text);

private:
    InfoForm form;
};

} // namespace quillbrook
