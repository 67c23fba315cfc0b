#include "pages/kit/SearchField.h"

#include "pages/kit/IconButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/SymbolLabel.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>

namespace quillbrook {

namespace {

constexpr int kHeight = 32;
constexpr int kSidePadding = 10;
constexpr int kSpacing = 6;
constexpr int kGlassPixels = 14;
constexpr int kClearPixels = 14;
constexpr double kRadius = 8;

} // namespace

SearchField::SearchField(const QString& placeholder, QWidget* parent)
    : Panel({.padding = 0, .radius = kRadius}, parent)
    , editor(new QLineEdit)
{
    editor->setPlaceholderText(placeholder);
    editor->setAccessibleName(placeholder);
    editor->setFrame(false);
    editor->setFont(Look::font(TextStyle::body));
    editor->installEventFilter(this);
    auto* clear = new IconButton("xmark.circle.fill", kClearPixels, "清空搜索");
    clear->hide();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kSidePadding, 0, kSidePadding - kSpacing, 0);
    row->setSpacing(kSpacing);
    row->addWidget(new SymbolLabel("magnifyingglass", kGlassPixels, secondaryTint()));
    row->addWidget(editor, 1);
    row->addWidget(clear);
    setFixedHeight(kHeight);
    setFocusProxy(editor);

    connect(editor, &QLineEdit::textChanged, this, [this, clear](const QString& text) {
        clear->setVisible(!text.isEmpty());
        emit textChanged(text);
    });
    connect(clear, &IconButton::clicked, this, [this] {
        editor->setFocus(); // before the button goes and hands it on to another
        editor->clear();
    });
}

QString SearchField::text() const
{
    return editor->text();
}

void SearchField::setText(const QString& text)
{
    editor->setText(text);
}

bool SearchField::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        emit leftDownwards();
        return true;
    }
    return Panel::eventFilter(object, event);
}

} // namespace quillbrook
