#pragma once

class QAbstractScrollArea;

namespace quillbrook {

/// Scrolls by one of the keys that scroll: the arrows, Page Up, Page Down, Home and End. False for
/// any other key, and where there is nothing to scroll in that direction.
bool scrollByKey(QAbstractScrollArea& area, int key);

} // namespace quillbrook
