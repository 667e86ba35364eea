#pragma once

#include "ServiceManagement/SMAppService.h"

#include <string>

/// An entry `<identifier>.desktop` in the autostart folder of the user's configuration. It is
/// replaced as a whole, so a reader or a crash finds the old text or the new one. Where it is a
/// link, what it leads to is replaced; removing it leaves that alone.
///
/// A system's own entry of that name counts where the user has none. It can only be hidden, by an
/// entry of the user's, which then is what removing leaves behind.
class LoginEntry : public SMAppService {
public:
    struct Application {
        std::string identifier;
        std::string name;
        std::string program; ///< Its executable's absolute path.
    };
    explicit LoginEntry(Application application);

    SMAppServiceStatus status() const override;
    bool registerAndReturnError(std::shared_ptr<NSError>& error) override;
    bool unregisterAndReturnError(std::shared_ptr<NSError>& error) override;

private:
    const Application m_application;
};

/// Puts another service in the place of the running application's. Null for its own.
void installMainAppService(std::shared_ptr<SMAppService> service);
