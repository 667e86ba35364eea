#pragma once

/// Makes panels known to assistive technology as what their views say that they are.
void offerPanelsToAssistiveTechnology();
