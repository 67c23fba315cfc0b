#include "pages/views/PermissionSetupActions.h"

#include "pages/kit/BorderedButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/PlainButton.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/TintedLabel.h"
#include "platform/qt/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <span>

namespace quillbrook {

namespace {

constexpr int kHintSpacing = 6;
constexpr int kButtonSpacing = 16;
constexpr int kConfirmationPixels = 15;
constexpr int kSkipPixels = 12;

} // namespace

PermissionSetupActions::PermissionSetupActions(const SetupActions& content, QWidget* parent)
    : QWidget(parent)
    , rows(new QVBoxLayout(this))
{
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kHintSpacing);
    rows->addStretch();
    if (!content.confirmation.empty()) {
        addConfirmation(toQString(content.confirmation));
    }
    first = addButton(content.buttons.front());
    for (const SetupButton& each : std::span(content.buttons).subspan(1)) {
        addButton(each);
    }
    first->setForm(ButtonForm::prominent);
    if (!content.confirmation.empty()) {
        first->setAccessibleDescription(toQString(content.confirmation));
    }
    rows->addStretch();
    if (!content.skip.empty()) {
        addSkip(toQString(content.skip));
    }
}

void PermissionSetupActions::addConfirmation(const QString& text)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(kHintSpacing);
    row->addStretch();
    row->addWidget(
        new SymbolLabel("checkmark.circle.fill", kConfirmationPixels, Tint{SystemColor::green}));
    row->addWidget(
        new TintedLabel(text, Look::font(TextStyle::body, QFont::Medium), {SystemColor::green}));
    row->addStretch();
    rows->addLayout(row);
    rows->addSpacing(kHintSpacing);
}

BorderedButton* PermissionSetupActions::addButton(const SetupButton& content)
{
    auto* button = new BorderedButton(toQString(content.symbol), toQString(content.text), {});
    button->setForm(ButtonForm::large);
    connect(button, &BorderedButton::clicked, this,
        [this, action = content.action] { emit pressed(action); });
    rows->addWidget(button, 0, Qt::AlignHCenter);
    if (!content.hint.empty()) {
        const QString hint = toQString(content.hint);
        button->setAccessibleDescription(hint);
        rows->addWidget(
            secondaryLabel(hint, Look::font(TextStyle::subheadline)), 0, Qt::AlignHCenter);
    }
    rows->addSpacing(kButtonSpacing);
    return button;
}

void PermissionSetupActions::addSkip(const QString& text)
{
    auto* skip = new PlainButton({}, text, kSkipPixels, secondaryTint());
    connect(skip, &PlainButton::clicked, this, [this] { emit pressed(SetupAction::goOn); });
    rows->addWidget(skip, 0, Qt::AlignHCenter);
}

} // namespace quillbrook
