#pragma once

namespace quillbrook::lab {

class Arguments;

/// `page --tab Setup`: the window before the first recording.
int setupPage(const Arguments& arguments);

} // namespace quillbrook::lab
