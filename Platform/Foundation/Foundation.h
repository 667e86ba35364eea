#pragma once

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
#include "Foundation/NSURL.h"
#include "Foundation/NSUserDefaults.h"
