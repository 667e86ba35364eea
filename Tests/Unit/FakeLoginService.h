#pragma once

#include "ServiceManagement/LoginEntry+Private.h"

#include <string>
#include <utility>

/// Keeps what it is asked for, or refuses.
struct FakeLoginService : SMAppService {
    SMAppServiceStatus status() const override { return now; }
    bool registerAndReturnError(std::shared_ptr<NSError>& error) override {
        calls += "register ";
        return change(SMAppServiceStatusEnabled, error);
    }
    bool unregisterAndReturnError(std::shared_ptr<NSError>& error) override {
        calls += "unregister ";
        return change(SMAppServiceStatusNotRegistered, error);
    }

    bool change(SMAppServiceStatus wanted, std::shared_ptr<NSError>& error) {
        if (refuses)
            error = std::make_shared<NSError>("Here", 7, "Not today");
        else
            now = wanted;
        return !refuses;
    }

    /// What was asked since the last time.
    std::string taken() { return std::exchange(calls, ""); }

    SMAppServiceStatus now = SMAppServiceStatusNotRegistered;
    bool refuses = false;
    std::string calls;
};
