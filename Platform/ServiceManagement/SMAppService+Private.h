#pragma once

#include "ServiceManagement/SMAppService.h"

/// Puts another service in the place of the running application's. Null for its own.
void installMainAppService(std::shared_ptr<SMAppService> service);
