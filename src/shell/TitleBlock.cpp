#include "shell/TitleBlock.h"

#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

TitleBlock::TitleBlock(QWidget* parent) : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addWidget(textLabel("墨川·Quillbrook", Look::systemFont(16, QFont::Bold)));
    column->addWidget(secondaryLabel("墨以记之，川流不息", Look::systemFont(10)));
}

} // namespace quillbrook
