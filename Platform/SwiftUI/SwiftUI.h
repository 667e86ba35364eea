#pragma once

#include "SwiftUI/NSHostingController.h"
#include "SwiftUI/ObservedObject.h"
#include "SwiftUI/Styles.h"
#include "SwiftUI/View.h"
#include "SwiftUI/Views.h"
