#include "pages/views/VerticalChineseText.h"

#include "pages/figures/VerticalTextMarks.h"

#include <utility>

namespace quillbrook {

VerticalChineseText::VerticalChineseText(std::vector<std::string> lines, QWidget* parent)
    : MarkView(QString(), parent)
{
    const Size size = verticalTextSize(lines);
    setFixedSize(static_cast<int>(size.width), static_cast<int>(size.height));
    setPicture(
        [lines = std::move(lines)](Size, const TextWidth&) { return verticalTextMarks(lines); });
}

} // namespace quillbrook
