#pragma once

#include "AppKit/NSViewController.h"

#include <vector>

/// What an alert shows: the program's icon, two texts and a row of buttons, the first at the right.
class AlertController : public NSViewController {
public:
    std::string messageText;
    std::string informativeText;
    std::vector<std::string> buttons;

    std::unique_ptr<ViewContent> loadView() override;
};
