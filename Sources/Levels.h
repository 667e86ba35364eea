#pragma once

#include "Foundation/Foundation.h"

/// Where alerts and the edition window stand: above the covers at 1000 and the floating buttons at
/// 1001, so that they can be read while the screens are blurred.
inline constexpr NSInteger aboveTheButtons = 1002;
