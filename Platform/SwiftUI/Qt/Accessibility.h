#pragma once

#include <QWidget>

/// One element to assistive technology, whatever stands within: it reads as its accessible name.
class AccessibleGroup : public QWidget {
public:
    using QWidget::QWidget;
};

/// Once is enough for the whole process; more do no harm.
void offerElementsToAssistiveTechnology();
