#pragma once

#include "pages/marks/TextFace.h"

namespace quillbrook {

/// Measures text with the fonts that draw it, each of which is looked up once. Main thread only.
TextWidth faceWidths();

} // namespace quillbrook
