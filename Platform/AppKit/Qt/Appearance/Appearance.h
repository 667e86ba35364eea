#pragma once

#include "AppKit/Qt/Appearance/Preference.h"

/// How the program's windows look: light or dark, as the desktop prefers at the moment, as the
/// toolkit's platform looks where no more is told, and light where nothing tells.
class Appearance : public QObject {
public:
    explicit Appearance(QObject& application);

private:
    void dress() const;

    const bool m_foundDark; ///< What the toolkit found at the start.
    Preference m_dark;
};
