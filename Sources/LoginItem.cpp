#include "LoginItem.h"

#include "Foundation/Foundation.h"
#include "ServiceManagement/ServiceManagement.h"

void LoginItem::set(bool on) {
    auto& service = SMAppService::mainAppService();
    std::shared_ptr<NSError> error;
    const bool done =
        on ? service.registerAndReturnError(error) : service.unregisterAndReturnError(error);
    if (!done) NSLog("Nimbrel Lite: login item not changed: " + error->description());
}
