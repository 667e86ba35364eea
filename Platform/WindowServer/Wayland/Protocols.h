// The protocols that the compositor is spoken to in, as their descriptions become at build time.
#pragma once

#include <wayland-client.h>

#include "blur-client.h"
#include "ext-background-effect-v1-client.h"
#include "fractional-scale-v1-client.h"
#include "viewporter-client.h"
#include "wlr-layer-shell-unstable-v1-client.h"
#include "wlr-screencopy-unstable-v1-client.h"
#include "xdg-output-unstable-v1-client.h"
