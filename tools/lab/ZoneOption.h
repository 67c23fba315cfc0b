#pragma once

#include "lab/Arguments.h"

namespace quillbrook::lab {

/// What `--zone` says, seconds ahead of UTC; 28800 without it. Ends the program when it is no
/// offset of a zone.
int zoneSeconds(const Arguments& arguments);

} // namespace quillbrook::lab
