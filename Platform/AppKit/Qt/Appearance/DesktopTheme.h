#pragma once

#include <QObject>
#include <QString>

/// What the desktop's own programs wear.
class DesktopTheme : public QObject {
    Q_OBJECT

public:
    static DesktopTheme& current();

    QString name() const; ///< Empty where nobody tells.

signals:
    void changed();

private:
    DesktopTheme();
};
