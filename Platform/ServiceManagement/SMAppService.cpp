#include "ServiceManagement/SMAppService.h"

#include "Foundation/NSBundle.h"
#include "ServiceManagement/LoginEntry+Private.h"

#include <QCoreApplication>

#include <utility>

namespace {

std::shared_ptr<SMAppService> installedService;

LoginEntry::Application application() {
    const auto& bundle = NSBundle::mainBundle();
    return {.identifier = bundle.bundleIdentifier().value_or(""),
            .name = bundle.objectForInfoDictionaryKey("CFBundleName").value_or(""),
            .program = QCoreApplication::applicationFilePath().toStdString()};
}

} // namespace

SMAppService& SMAppService::mainAppService() {
    static LoginEntry service(application());
    return installedService ? *installedService : service;
}

void installMainAppService(std::shared_ptr<SMAppService> service) {
    installedService = std::move(service);
}
