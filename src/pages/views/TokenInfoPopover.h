#pragma once

class QWidget;

namespace quillbrook {

/// Opens the popover that explains how keys become tokens; it hangs on `anchor`.
void openTokenInfo(QWidget* anchor);

} // namespace quillbrook
