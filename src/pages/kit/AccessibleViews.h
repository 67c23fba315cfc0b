#pragma once

namespace quillbrook {

/// Lets screen readers find the kit's widgets: the marks of a `MarkView` as its children,
/// and a `Spoken` widget as what it says it is. Once, after the application object was made; main
/// thread.
void installAccessibleViews();

} // namespace quillbrook
