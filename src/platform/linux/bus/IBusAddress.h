#pragma once

#include <QString>

namespace quillbrook {

/// The folder in which IBus leaves the address of its bus, a file for each display.
QString ibusAddressDirectory();

/// The address of IBus's bus for this display; empty when there is none.
QString ibusAddress();

} // namespace quillbrook
