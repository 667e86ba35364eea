#pragma once

#include "AppKit/PortalSetting+Private.h"

/// How the program's windows look: light or dark, as the desktop prefers at the moment, and light
/// where it has no preference.
class Appearance : public QObject {
public:
    explicit Appearance(QObject& application);

private:
    void dress() const;

    PortalSetting m_scheme;
};
