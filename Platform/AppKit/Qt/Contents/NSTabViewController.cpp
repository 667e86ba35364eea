#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Windows/Accessible.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QStackedWidget>

#include <algorithm>

namespace {

// In points.
constexpr int symbolSize = 22;
constexpr int labelSize = 11;
constexpr int leastWidth = 68;
constexpr int sideEdge = 10;
constexpr int upperEdge = 5;
constexpr double corner = 6;
constexpr int barEdge = 6;
constexpr int gap = 4;
constexpr int hairline = 1;

/// A symbol above its label, in the accent colour while it is the chosen one.
class TabButton : public QAbstractButton, public Accessible {
public:
    /// The icon is drawn in the pen's colour.
    TabButton(const QString& label, const QIcon& icon) {
        setText(label);
        setAccessibleName(label);
        setIcon(icon);
        setCheckable(true);
        setAutoExclusive(true);
        // The keyboard enters the row at the chosen tab, whatever chose it.
        setFocusPolicy(Qt::NoFocus);
        connect(this, &QAbstractButton::toggled, this,
                [this](bool on) { setFocusPolicy(on ? Qt::TabFocus : Qt::NoFocus); });
        setAttribute(Qt::WA_Hover);
        QFont small = font();
        small.setPixelSize(labelSize);
        setFont(small);
    }

    QSize sizeHint() const override {
        const QSize label = fontMetrics().size(Qt::TextSingleLine, text());
        return {std::max(leastWidth, label.width() + 2 * sideEdge),
                upperEdge + symbolSize + 2 + label.height() + upperEdge};
    }

    QAccessible::Role accessibleRole() const override { return QAccessible::PageTab; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor accent = palette().color(QPalette::Highlight);
        painter.setPen(hasFocus() ? QPen(accent, 2) : Qt::NoPen);
        painter.setBrush(faintText(palette(), isChecked()                ? 0.09
                                              : isDown() || underMouse() ? 0.05
                                                                         : 0));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);

        // Enough of the text's colour to read small print by on the chosen tab's ground.
        const QColor text = palette().color(QPalette::WindowText);
        painter.setPen(isChecked() ? mixed(text, accent, 0.4) : text);
        icon().paint(&painter,
                     QRect((width() - symbolSize) / 2, upperEdge, symbolSize, symbolSize));
        painter.drawText(rect().adjusted(0, 0, 0, -upperEdge), Qt::AlignHCenter | Qt::AlignBottom,
                         QAbstractButton::text());
    }
};

/// The tabs of one toolbar, and the line that parts them from what is below.
class TabRow : public QWidget, public Accessible {
public:
    QAccessible::Role accessibleRole() const override { return QAccessible::PageTabList; }

protected:
    void paintEvent(QPaintEvent*) override {
        const QRect line = rect().adjusted(0, height() - hairline, 0, 0);
        QPainter(this).fillRect(line, faintText(palette(), 0.15));
    }
};

/// The toolbar of a tab view controller, and the chosen tab's view below.
class TabContent : public ViewContent {
public:
    explicit TabContent(NSTabViewController& controller)
        : m_controller(controller), m_toolbar(new TabRow), m_views(new QStackedWidget) {
        m_toolbar->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(m_toolbar);
        layout->addWidget(m_views);
        auto* row = new QHBoxLayout(m_toolbar);
        row->setContentsMargins(barEdge, barEdge, barEdge, barEdge + hairline);
        row->setSpacing(gap);
        row->addStretch();
        for (const auto& item : controller.tabViewItems()) {
            auto* const button = buttonFor(*item);
            row->addWidget(button);
            if (m_views->count() == 0) button->setChecked(true);
            auto content = item->viewController()->loadView();
            const NSSize& size = item->viewController()->preferredContentSize();
            content->setFixedWidth(static_cast<int>(size.width));
            content->setMaximumHeight(static_cast<int>(size.height));
            m_views->addWidget(content.release());
        }
        row->addStretch();
    }

    int toolbarHeight() const override { return m_toolbar->sizeHint().height(); }

private:
    TabButton* buttonFor(const NSTabViewItem& item) {
        auto* button = new TabButton(QString::fromStdString(item.label()),
                                     item.image() ? inkIconFrom(*item.image()) : QIcon());
        connect(button, &QAbstractButton::clicked, this, [this, &item, index = m_views->count()] {
            m_views->setCurrentIndex(index);
            m_controller.setTitle(item.viewController()->title());
        });
        return button;
    }

    NSTabViewController& m_controller;
    QWidget* const m_toolbar;
    QStackedWidget* const m_views;
};

} // namespace

void NSTabViewController::addTabViewItem(std::shared_ptr<NSTabViewItem> item) {
    if (m_items.empty()) setTitle(item->viewController()->title());
    m_items.push_back(std::move(item));
}

std::unique_ptr<ViewContent> NSTabViewController::loadView() {
    return std::make_unique<TabContent>(*this);
}
