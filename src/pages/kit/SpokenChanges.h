#pragma once

#include <QString>

#include <vector>

class QWidget;

namespace quillbrook {

/// What is read of one painted child.
struct SpokenText {
    QString name{};
    QString value{};
};

/// Tells screen readers what became of a widget's painted children, which they know by their
/// places: what they have read of a child counts for them until they hear that it is called
/// otherwise.
void tellSpokenChanges(
    QWidget& widget, const std::vector<SpokenText>& before, const std::vector<SpokenText>& now);

} // namespace quillbrook
