#include "pages/kit/LoadingState.h"

#include "pages/kit/Look.h"
#include "pages/kit/Spinner.h"
#include "pages/kit/TextDrawing.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

LoadingState::LoadingState(QWidget* parent) : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->addStretch();
    column->addWidget(new Spinner, 0, Qt::AlignHCenter);
    column->addWidget(
        secondaryLabel("加载中...", Look::font(TextStyle::body)), 0, Qt::AlignHCenter);
    column->addStretch();
}

} // namespace quillbrook
