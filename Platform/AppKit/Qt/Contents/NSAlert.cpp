#include "AppKit/NSAlert.h"

#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Contents/ViewContent.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>

namespace {

// In points.
constexpr int iconSize = 56;
constexpr int edge = 20;
constexpr int iconGap = 16;
constexpr int leastTextWidth = 340;

/// Leaves the arrow keys to the row that it stands in.
class AlertButton : public QPushButton {
public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override {
        constexpr QSize least(84, 26);
        constexpr int sidePadding = 14;
        const int label = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
        return QSize(label + 2 * sidePadding, 0).expandedTo(least).grownBy(focusRingMargins);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        drawPushButton(painter, rect() - focusRingMargins, palette(),
                       {.radius = 6,
                        .prominent = isDefault(),
                        .tint = palette().color(QPalette::Highlight),
                        .down = isDown(),
                        .hovered = underMouse(),
                        .focused = hasFocus()});
        painter.setPen(
            palette().color(isDefault() ? QPalette::HighlightedText : QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) return event->ignore();
        QPushButton::keyPressEvent(event);
    }
};

/// The program's icon, the alert's two texts and a row of its buttons.
class AlertContent : public ViewContent {
public:
    explicit AlertContent(const NSAlert* alert)
        : m_message(QString::fromStdString(alert->messageText())),
          m_information(QString::fromStdString(alert->informativeText())) {
        constexpr int letters = 13;
        QLabel* const paragraphs[] = {labelOf(m_message, letters, QFont::Bold),
                                      labelOf(m_information, letters, QFont::Normal)};
        auto* texts = new QVBoxLayout;
        texts->setSpacing(6);
        for (QLabel* paragraph : paragraphs)
            texts->addWidget(paragraph);
        texts->addStretch();

        auto* top = new QHBoxLayout;
        top->setSpacing(iconGap);
        top->addWidget(iconLabel(iconSize), 0, Qt::AlignTop);
        top->addLayout(texts);

        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(edge, edge, edge, edge);
        all->setSpacing(edge);
        all->addLayout(top);
        // Last, so to assistive technology too the buttons follow the texts.
        auto* const row = rowOf(alert->buttons());
        all->addLayout(row);
        for (QLabel* paragraph : paragraphs) {
            paragraph->setWordWrap(true);
            paragraph->setFixedWidth(
                std::max(leastTextWidth, row->sizeHint().width() - iconSize - iconGap));
        }
    }

protected:
    void showEvent(QShowEvent*) override {
        window()->setAccessibleName(m_message);
        window()->setAccessibleDescription(m_information);
        m_buttons.front()->setFocus();
    }

    void keyPressEvent(QKeyEvent* event) override {
        const auto at = std::ranges::find_if(m_buttons, &QWidget::hasFocus) - m_buttons.begin();
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return buttonAt(at)->click();
        case Qt::Key_Escape:
            return buttonAt(1)->click();
        // The row runs from the last button to the first.
        case Qt::Key_Left:
            return buttonAt(at + 1)->setFocus(Qt::TabFocusReason);
        case Qt::Key_Right:
            return buttonAt(at - 1)->setFocus(Qt::TabFocusReason);
        default:
            ViewContent::keyPressEvent(event);
        }
    }

private:
    QLayout* rowOf(const std::vector<std::string>& titles) {
        auto* row = new QHBoxLayout;
        row->setDirection(QBoxLayout::RightToLeft);
        row->setSpacing(10);
        for (const std::string& title : titles) {
            const auto answer = NSAlertFirstButtonReturn + static_cast<NSInteger>(m_buttons.size());
            auto* button = new AlertButton(QString::fromStdString(title).replace("&", "&&"), this);
            button->setDefault(m_buttons.empty());
            connect(button, &QPushButton::clicked, button,
                    [answer] { NSApp->stopModalWithCode(answer); });
            row->addWidget(button);
            m_buttons.push_back(button);
        }
        row->addStretch();
        return row;
    }

    /// The first or the last one, where the place is beyond it.
    QPushButton* buttonAt(std::ptrdiff_t place) const {
        const auto last = std::ssize(m_buttons) - 1;
        return m_buttons[static_cast<size_t>(std::clamp<std::ptrdiff_t>(place, 0, last))];
    }

    const QString m_message;
    const QString m_information;
    std::vector<QPushButton*> m_buttons; ///< The first one at the right.
};

} // namespace

NSAlert::NSAlert()
    : m_window(NSWindow::windowWithContentViewController(
          std::make_shared<ContentController<AlertContent, const NSAlert*>>(this))) {
    m_window->setStyleMask(NSWindowStyleMaskTitled);
}

NSModalResponse NSAlert::runModal() { return NSApp->runModalForWindow(*m_window); }
