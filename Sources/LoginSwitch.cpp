#include "LoginSwitch.h"

#include "LoginItem.h"
#include "ServiceManagement/ServiceManagement.h"

namespace {

bool isEnabled() { return SMAppService::mainAppService().status() == SMAppServiceStatusEnabled; }

} // namespace

LoginSwitch::LoginSwitch()
    : on(*this, isEnabled(), [this](bool oldValue) {
          if (on != oldValue) LoginItem::set(on);
      }) {}

void LoginSwitch::refresh() {
    const bool enabled = isEnabled();
    if (on != enabled) on = enabled;
}
