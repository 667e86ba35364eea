#pragma once

/// Makes known to assistive technology what the toolkit cannot tell of by itself: panels as what
/// their views say that they are, windows, and tabs.
void offerWidgetsToAssistiveTechnology();
