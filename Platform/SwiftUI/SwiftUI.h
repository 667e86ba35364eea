#pragma once

#include "SwiftUI/Binding.h"
#include "SwiftUI/Color.h"
#include "SwiftUI/Controls.h"
#include "SwiftUI/Font.h"
#include "SwiftUI/Form.h"
#include "SwiftUI/NSHostingController.h"
#include "SwiftUI/ObservedObject.h"
#include "SwiftUI/Shapes.h"
#include "SwiftUI/Stacks.h"
#include "SwiftUI/Styles.h"
#include "SwiftUI/Text.h"
#include "SwiftUI/View.h"
