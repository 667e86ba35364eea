#pragma once

#include "Foundation/NSBundle.h"
#include "Foundation/NSLog.h"
#include "Foundation/NSNotificationCenter.h"
#include "Foundation/NSObject.h"
#include "Foundation/NSTimer.h"
#include "Foundation/NSUserDefaults.h"
#include "Foundation/NSValues.h"
