#pragma once

#include "pages/kit/MarkView.h"

#include <string>
#include <vector>

namespace quillbrook {

/// Lines of Chinese as columns, from left to right in the given order.
class VerticalChineseText final : public MarkView {
    Q_OBJECT

public:
    explicit VerticalChineseText(std::vector<std::string> lines, QWidget* parent = nullptr);
};

} // namespace quillbrook
