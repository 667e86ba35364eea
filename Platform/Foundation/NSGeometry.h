#pragma once

#include "CoreGraphics/CGGeometry.h"

using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;
