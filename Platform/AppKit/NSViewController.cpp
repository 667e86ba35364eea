#include "AppKit/NSViewController.h"

#include "AppKit/ViewContent+Private.h"

void NSViewController::setTitle(const std::string& title) {
    if (m_title == title) return;
    m_title = title;
    if (m_titleChanged) m_titleChanged();
}
