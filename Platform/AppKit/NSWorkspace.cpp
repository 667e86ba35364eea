#include "AppKit/NSWorkspace.h"

#include "AppKit/PortalSetting+Private.h"

#include <QDesktopServices>
#include <QUrl>

NSWorkspace& NSWorkspace::sharedWorkspace() {
    static auto* const workspace = new NSWorkspace; // Outlives the bus it listens to.
    return *workspace;
}

NSWorkspace::NSWorkspace() : m_contrast(std::make_unique<PortalSetting>("contrast")) {
    m_contrast->onChanged = [this] {
        m_notificationCenter.postNotificationName(
            NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr);
    };
}

NSWorkspace::~NSWorkspace() = default;

bool NSWorkspace::openURL(const NSURL& url) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(url.absoluteString())));
}

bool NSWorkspace::accessibilityDisplayShouldReduceTransparency() const {
    constexpr uint higherContrast = 1;
    return m_contrast->value() == higherContrast;
}
