#pragma once

// The C header of the keyboard extension has members named `explicit`. What it takes to include it
// is no fault of ours.
#pragma GCC system_header
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
