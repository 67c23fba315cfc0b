#pragma once

class QVBoxLayout;

namespace quillbrook {

/// Fills a popover with what the figures of the Today page mean.
void fillKpiInfo(QVBoxLayout& column);

} // namespace quillbrook
