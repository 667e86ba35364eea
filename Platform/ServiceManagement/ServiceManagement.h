#pragma once

#include "Foundation/Foundation.h"

/// The domain of the errors below.
inline const NSErrorDomain SMAppServiceErrorDomain = "SMAppServiceErrorDomain";

/// The system refused; the description names the file and tells its reason.
inline constexpr NSInteger kSMErrorInternalFailure = 2;

/// Whether the program starts when the user logs in.
enum SMAppServiceStatus : NSInteger {
    SMAppServiceStatusNotRegistered = 0,
    SMAppServiceStatusEnabled = 1,
    SMAppServiceStatusRequiresApproval = 2, ///< Registered, and turned off by the user's desktop.
    SMAppServiceStatusNotFound = 3, ///< Registered, and nothing that can be started is named.
};

/// Whether a program starts at login: an entry `<identifier>.desktop` in the autostart folder of
/// the user's configuration. Others may change that: each call looks at it anew. The entry is
/// replaced as a whole, so a reader or a crash finds the old text or the new one. Where it is a
/// link, what it leads to is replaced; removing it leaves that alone.
///
/// A system's own entry of that name counts where the user has none. It can only be hidden, by an
/// entry of the user's, which then is what removing leaves behind.
class SMAppService : public NSObject {
public:
    struct Application {
        std::string identifier;
        std::string name;
        std::string program; ///< Its executable's absolute path.
    };
    explicit SMAppService(Application application) : m_application(std::move(application)) {}

    /// The running application's.
    static SMAppService& mainAppService();

    SMAppServiceStatus status() const;

    /// Makes the executable start at login, also where the user's desktop had turned it off. True
    /// if it is done; else the error is set, and all stays as it was.
    bool registerAndReturnError(std::shared_ptr<NSError>& error);

    /// True also where nothing was registered; else the error is set, and all stays as it was.
    bool unregisterAndReturnError(std::shared_ptr<NSError>& error);

private:
    const Application m_application;
};
