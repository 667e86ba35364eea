#include "AppKit/Qt/Windows/TitleBar.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

#include <QAbstractButton>
#include <QHBoxLayout>

namespace {

// In points.
constexpr int buttonSize = 18;
constexpr int buttonInset = 8; ///< From the bar's right end.
constexpr double crossReach = 3.5;

/// A cross in a disc, which shows while the pointer or the keyboard is on it.
class CloseButton : public QAbstractButton {
public:
    explicit CloseButton(QWidget* parent) : QAbstractButton(parent) {
        setAccessibleName("Close");
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setFixedSize(buttonSize, buttonSize);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : Qt::NoPen);
        painter.setBrush(faintText(palette(), isDown()                     ? 0.25
                                              : underMouse() || hasFocus() ? 0.15
                                                                           : 0.08));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
        painter.setPen(QPen(faintText(palette(), 0.75), 1.4, Qt::SolidLine, Qt::RoundCap));
        painter.translate(QRectF(rect()).center());
        painter.drawLine(QPointF(-crossReach, -crossReach), QPointF(crossReach, crossReach));
        painter.drawLine(QPointF(-crossReach, crossReach), QPointF(crossReach, -crossReach));
    }
};

} // namespace

TitleBar::TitleBar(QWidget& window, bool closable) : QWidget(&window) {
    setFixedHeight(height);
    connect(&window, &QWidget::windowTitleChanged, this, [this] { update(); });
    if (!closable) return;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, buttonInset, 0);
    auto* close = new CloseButton(this);
    layout->addWidget(close, 0, Qt::AlignRight | Qt::AlignVCenter);
    connect(close, &QAbstractButton::clicked, &window, &QWidget::close);
}

void TitleBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    painter.setFont(bold);
    const int aside = buttonSize + 2 * buttonInset;
    const QRect room = rect().adjusted(aside, 0, -aside, 0);
    painter.drawText(
        room, Qt::AlignCenter,
        painter.fontMetrics().elidedText(window()->windowTitle(), Qt::ElideRight, room.width()));
}
