#include "AppKit/NSAlert.h"
#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Contents/Controllers.h"
#include "AppKit/Qt/Contents/ViewContent.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace {

// In points.
constexpr int iconSize = 56;
constexpr int edge = 20;
constexpr int iconGap = 16;
constexpr int leastTextWidth = 340;

QLabel* labelWith(const QString& text, QFont::Weight weight, int width) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(width);
    QFont font = label->font();
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

/// Leaves the arrow keys to the row that it stands in.
class AlertButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) return event->ignore();
        QPushButton::keyPressEvent(event);
    }
};

class AlertContent : public ViewContent {
public:
    explicit AlertContent(const NSAlert& alert)
        : m_message(QString::fromStdString(alert.messageText())),
          m_information(QString::fromStdString(alert.informativeText())) {
        auto* const row = rowOf(alert.buttons());
        const int width = std::max(leastTextWidth, row->sizeHint().width() - iconSize - iconGap);
        auto* texts = new QVBoxLayout;
        texts->setSpacing(6);
        texts->addWidget(labelWith(m_message, QFont::Bold, width));
        texts->addWidget(labelWith(m_information, QFont::Normal, width));
        texts->addStretch();

        auto* top = new QHBoxLayout;
        top->setSpacing(iconGap);
        auto* icon = new QLabel;
        icon->setPixmap(QApplication::windowIcon().pixmap(iconSize));
        icon->setAccessibleName(QCoreApplication::applicationName());
        top->addWidget(icon, 0, Qt::AlignTop);
        top->addLayout(texts);

        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(edge, edge, edge, edge);
        all->setSpacing(edge);
        all->addLayout(top);
        all->addLayout(row);
        for (size_t i = 1; i < m_buttons.size(); ++i)
            setTabOrder(m_buttons[i - 1], m_buttons[i]);
        // To assistive technology they come after the texts.
        for (QPushButton* button : m_buttons)
            button->raise();
    }

protected:
    void showEvent(QShowEvent*) override {
        window()->setAccessibleName(m_message);
        window()->setAccessibleDescription(m_information);
        if (!m_buttons.empty()) m_buttons.front()->setFocus();
    }

    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return press(focused());
        case Qt::Key_Escape:
            return press(cancelButton());
        // The row runs from the last button to the first.
        case Qt::Key_Left:
            return moveFocus(1);
        case Qt::Key_Right:
            return moveFocus(-1);
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
            QObject::connect(button, &QPushButton::clicked, button,
                             [answer] { NSApp->stopModalWithCode(answer); });
            row->addWidget(button);
            m_buttons.push_back(button);
        }
        row->addStretch();
        return row;
    }

    static void press(QPushButton* button) {
        if (button) button->animateClick();
    }

    QPushButton* focused() const {
        const auto found = std::ranges::find_if(m_buttons, &QWidget::hasFocus);
        if (found != m_buttons.end()) return *found;
        return m_buttons.empty() ? nullptr : m_buttons.front();
    }

    QPushButton* cancelButton() const {
        if (m_buttons.empty()) return nullptr;
        return m_buttons.size() == 1 ? m_buttons[0] : m_buttons[1];
    }

    void moveFocus(int by) {
        const auto at = std::ranges::find(m_buttons, focused()) - m_buttons.begin();
        const auto to = std::clamp<std::ptrdiff_t>(at + by, 0, std::ssize(m_buttons) - 1);
        if (to >= 0) m_buttons[static_cast<size_t>(to)]->setFocus(Qt::TabFocusReason);
    }

    const QString m_message;
    const QString m_information;
    std::vector<QPushButton*> m_buttons; ///< The first one at the right.
};

class AlertController : public NSViewController {
public:
    explicit AlertController(const NSAlert& alert) : m_alert(alert) {}

    std::unique_ptr<ViewContent> loadView() override {
        return std::make_unique<AlertContent>(m_alert);
    }

private:
    const NSAlert& m_alert;
};

} // namespace

std::shared_ptr<NSViewController> controllerOf(const NSAlert& alert) {
    return std::make_shared<AlertController>(alert);
}
