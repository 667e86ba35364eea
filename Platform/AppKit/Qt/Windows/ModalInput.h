#pragma once

#include <QObject>

class QApplication;

/// Keeps input from the program's windows with a frame while another one of them runs modally. The
/// toolkit's own modality would take in the buttons and the tray's icon, which always work.
class ModalInput : public QObject {
public:
    explicit ModalInput(QApplication& application);

    bool eventFilter(QObject* object, QEvent* event) override;
};
