#pragma once

#include "Foundation/Foundation.h"

// What is to be seen while the screens are blurred stands above the covers, which are at 1000.
inline constexpr NSInteger aboveTheCovers = 1001;  ///< The floating buttons.
inline constexpr NSInteger aboveTheButtons = 1002; ///< Alerts and the edition window.
