#pragma once

#define explicit explicit_ // A member of this C header has that name.
#include <xcb/xkb.h>
#undef explicit
