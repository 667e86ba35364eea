#include "SwiftUI/NSHostingController.h"

#include "SwiftUI/Qt/HostView.h"

std::unique_ptr<ViewContent> NSHostingController::loadView() {
    return std::make_unique<HostView>(m_rootView);
}
