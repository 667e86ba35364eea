#include "AppKit/Qt/Contents/TabContent.h"

#include "AppKit/NSViewController.h"
#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Contents/TabButton.h"
#include "AppKit/Qt/Drawing/Symbol.h"

#include <QHBoxLayout>
#include <QStackedWidget>

namespace {

// In points.
constexpr int edge = 6;
constexpr int gap = 4;
constexpr int hairline = 1;

/// Parts the toolbar from what is below.
class Hairline : public QWidget {
public:
    Hairline() { setFixedHeight(hairline); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), faintText(palette(), 0.15));
    }
};

} // namespace

TabContent::TabContent(NSTabViewController& controller)
    : m_controller(controller), m_toolbar(new TabRow), m_views(new QStackedWidget) {
    fillToolbar();
    m_toolbar->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(new Hairline);
    layout->addWidget(m_views);
    for (const auto& item : controller.tabViewItems()) {
        auto content = item->viewController()->loadView();
        const NSSize& size = item->viewController()->preferredContentSize();
        content->setFixedWidth(static_cast<int>(size.width));
        content->setMaximumHeight(static_cast<int>(size.height));
        m_views->addWidget(content.release());
    }
    controller.selectionChanged = [this] { showSelected(); };
    showSelected();
}

TabContent::~TabContent() { m_controller.selectionChanged = nullptr; }

int TabContent::toolbarHeight() const { return m_toolbar->sizeHint().height() + hairline; }

void TabContent::fillToolbar() {
    auto* row = new QHBoxLayout(m_toolbar);
    row->setContentsMargins(edge, edge, edge, edge);
    row->setSpacing(gap);
    row->addStretch();
    for (const auto& item : m_controller.tabViewItems()) {
        const auto index = static_cast<NSInteger>(m_buttons.size());
        auto* button = new TabButton(QString::fromStdString(item->label()),
                                     item->image() ? inkIconFrom(*item->image()) : QIcon());
        connect(button, &QAbstractButton::clicked, this,
                [this, index] { m_controller.setSelectedTabViewItemIndex(index); });
        row->addWidget(button);
        m_buttons.push_back(button);
    }
    row->addStretch();
}

void TabContent::showSelected() {
    const auto selected = static_cast<int>(m_controller.selectedTabViewItemIndex());
    m_views->setCurrentIndex(selected);
    // The keyboard enters the row at the chosen tab, whatever chose it.
    for (TabButton* button : m_buttons)
        button->setFocusPolicy(Qt::NoFocus);
    if (selected < 0) return;
    TabButton* const chosen = m_buttons.at(static_cast<size_t>(selected));
    chosen->setChecked(true);
    chosen->setFocusPolicy(Qt::TabFocus);
}
