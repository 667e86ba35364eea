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

/// Whether a program starts at login. Others may change that: each call looks at it anew.
class SMAppService : public NSObject {
public:
    /// The running application's, an entry in the user's autostart folder.
    static SMAppService& mainAppService();

    virtual SMAppServiceStatus status() const = 0;

    /// Makes the running executable start at login, also where the user's desktop had turned it
    /// off. True if it is done; else the error is set, and all stays as it was.
    virtual bool registerAndReturnError(std::shared_ptr<NSError>& error) = 0;

    /// True also where nothing was registered; else the error is set, and all stays as it was.
    virtual bool unregisterAndReturnError(std::shared_ptr<NSError>& error) = 0;
};
