#include "AppKit/Qt/Panels/PanelWindow.h"

#include "AppKit/Qt/Panels/PanelWidget.h"

#include <QApplication>

PanelWindow::~PanelWindow() { PanelWindow::orderOut(); }

namespace {
void tellAll(void (PanelWidget::*what)()) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* panel = dynamic_cast<PanelWidget*>(widget)) (panel->*what)();
}
} // namespace

void PanelWindow::compositingChanged() { tellAll(&PanelWidget::checkForm); }

void PanelWindow::menuClosed() { tellAll(&PanelWidget::menuClosed); }

void PanelWindow::windowGone(unsigned long number) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* panel = dynamic_cast<PanelWidget*>(widget);
        if (!panel || panel->internalWinId() != number) continue;
        panel->onWindowGone();
        return;
    }
}

NSInteger PanelWindow::number() const {
    return m_widget ? static_cast<NSInteger>(m_widget->winId()) : 0;
}

void PanelWindow::setTitle(const std::string&) {
    if (m_widget) m_widget->updateTexts();
}

void PanelWindow::setFrame(const NSRect&) {
    if (m_widget) m_widget->updateFrame();
}

void PanelWindow::setLevel(NSInteger) {
    if (m_widget) m_widget->updateLevel();
}

void PanelWindow::setIgnoresMouseEvents(bool) {
    if (m_widget) m_widget->updatePicture();
}

void PanelWindow::setAlpha(double) {
    if (m_widget) m_widget->updateAlpha();
}

void PanelWindow::displayViews() {
    if (m_widget) m_widget->updatePicture();
}

void PanelWindow::describeViews() {
    if (m_widget) m_widget->updateTexts();
}

void PanelWindow::orderFront() {
    if (m_widget) return;
    m_widget = PanelWidget::make(m_window);
    const auto renew = [this] {
        m_widget->forgetPointer();
        orderOut();
        orderFront();
    };
    m_widget->onWrongForm = renew;
    m_widget->onWindowGone = renew;
    m_widget->enter();
}

void PanelWindow::orderOut() {
    if (!m_widget) return;
    m_widget->leave();
    m_widget.reset();
}
