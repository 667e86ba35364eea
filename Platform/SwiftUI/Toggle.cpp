#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

#include <QCheckBox>

namespace {

constexpr QSizeF switchSize(36, 20);
constexpr double gap = 8; ///< At least, between the title and the switch.

/// A title at the left and a switch at the right; a click on either turns it over.
class SwitchWidget : public QCheckBox {
public:
    explicit SwitchWidget(QWidget* parent) : QCheckBox(parent) {
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        // Assistive technology turns it over without a click.
        connect(this, &QAbstractButton::toggled, this, [this](bool on) {
            if (m_isOn && m_isOn->wrappedValue() != on) m_isOn->setWrappedValue(on);
        });
    }

    void setToggle(const std::string& title, const Binding<bool>& isOn,
                   const Environment& environment) {
        m_isOn = isOn;
        m_environment = environment;
        setFont(fontOf(environment));
        setText(QString::fromStdString(title).replace('&', "&&"));
        setChecked(isOn.wrappedValue());
        update();
    }

protected:
    bool hitButton(const QPoint& position) const override { return area().contains(position); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(foregroundOf(m_environment));
        painter.drawText(area(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic, text());
        const QRectF track(area().right() - switchSize.width(),
                           area().center().y() - switchSize.height() / 2, switchSize.width(),
                           switchSize.height());
        paintSwitch(painter, track);
        if (hasFocus()) drawFocusRing(painter, track, track.height() / 2, tintOf(m_environment));
    }

private:
    QRectF area() const { return QRectF(rect()) - focusRingMargins; }

    void paintSwitch(QPainter& painter, const QRectF& track) const {
        const QColor off = faintText(palette(), isDown() ? 0.34 : underMouse() ? 0.29 : 0.24);
        const QColor on = tintOf(m_environment).darker(isDown() ? 115 : underMouse() ? 106 : 100);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isChecked() ? on : off);
        painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
        constexpr double inset = 2;
        const double side = track.height() - 2 * inset;
        const double x = isChecked() ? track.right() - inset - side : track.left() + inset;
        painter.setBrush(QColor(0, 0, 0, 40));
        painter.drawEllipse(QRectF(x, track.top() + inset + 0.75, side, side));
        painter.setBrush(Qt::white);
        painter.drawEllipse(QRectF(x, track.top() + inset, side, side));
    }

    std::optional<Binding<bool>> m_isOn;
    Environment m_environment;
};

/// The widget stands around the element by the ring's margin.
class ToggleElement : public Element {
public:
    ToggleElement(const Environment& environment, const std::string& title,
                  const Binding<bool>& isOn) {
        take<SwitchWidget>(environment).setToggle(title, isOn, environment);
        readAs(title);
    }

    void place(const QRectF& rect) const override {
        widget().setGeometry(wholePoints(rect) + focusRingMargins);
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const auto& toggle = widget<SwitchWidget>();
        const QSizeF title = toggle.fontMetrics().size(Qt::TextShowMnemonic, toggle.text());
        const double least = title.width() + gap + switchSize.width();
        return {std::max(least, proposal.width.value_or(least)),
                std::max(title.height(), switchSize.height())};
    }
};

} // namespace

Toggle::Toggle(const std::string& title, const Options& options)
    : View(makeView<ToggleElement>(title, options.isOn)) {}
