#pragma once

#include "Foundation/NSArray.h"
#include "Foundation/NSBundle.h"
#include "Foundation/NSError.h"
#include "Foundation/NSGeometry.h"
#include "Foundation/NSLog.h"
#include "Foundation/NSNotificationCenter.h"
#include "Foundation/NSNumber.h"
#include "Foundation/NSObjCRuntime.h"
#include "Foundation/NSObject.h"
#include "Foundation/NSOperationQueue.h"
#include "Foundation/NSTimer.h"
#include "Foundation/NSUserDefaults.h"
