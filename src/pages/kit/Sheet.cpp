#include "pages/kit/Sheet.h"

namespace quillbrook {

Sheet::Sheet(const QString& title, QSize size, QWidget* owner) : QDialog(owner)
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setFixedSize(size);
}

} // namespace quillbrook
