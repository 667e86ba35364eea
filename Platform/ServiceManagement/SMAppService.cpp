#include "ServiceManagement/SMAppService.h"

#include "Foundation/NSBundle+Private.h"
#include "ServiceManagement/LoginEntry+Private.h"

#include <QCoreApplication>

#include <utility>

namespace {

std::shared_ptr<SMAppService> installedService;

LoginEntry::Application application() {
    return {.identifier = infoOf("CFBundleIdentifier"),
            .name = infoOf("CFBundleName"),
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
