#pragma once

#include "platform/virtual/OutsideCalls.h"

#include <QByteArray>

#include <vector>

namespace quillbrook::lab {

/// The calls that reached outside, a JSON line for each. The shell line that asks for the display
/// server's figures at every sample is left out.
QByteArray callLines(const std::vector<OutsideCall>& calls);

} // namespace quillbrook::lab
