#pragma once

#include "AppKit/Qt/Contents/ViewContent.h"

class NSTabViewController;
class QStackedWidget;
class TabButton;

/// The toolbar of a tab view controller, and the chosen tab's view below.
class TabContent : public ViewContent {
public:
    explicit TabContent(NSTabViewController& controller);
    ~TabContent() override;

    int toolbarHeight() const override;

private:
    void fillToolbar();
    void showSelected();

    NSTabViewController& m_controller;
    QWidget* const m_toolbar;
    QStackedWidget* const m_views;
    std::vector<TabButton*> m_buttons;
};
