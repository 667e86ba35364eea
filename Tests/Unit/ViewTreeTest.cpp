// What stays as views change, and as the keyboard goes through them.

#include "AppKit/Qt/Contents/ViewContent.h"
#include "SwiftUI/SwiftUI.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {

View box(double width, double height) {
    return Rectangle().fill(Color::red).frame({.width = width, .height = height});
}

/// On the screen, with the keyboard.
struct Shown {
    explicit Shown(const View& view, const QSize& size = {300, 200})
        : content(NSHostingController(view).loadView()), host(*content) {
        host.resize(size);
        host.show();
        host.activateWindow();
        QApplication::setActiveWindow(&host);
    }

    std::unique_ptr<ViewContent> content;
    QWidget& host;
};

struct Switch : ObservableObject {
    Published<bool> on{*this, false};
};

/// More of it stands there while the switch is on.
struct Settings {
    ObservedObject<Switch> object;

    View body() const {
        const View rest = box(10, 900);
        const View toggle = Toggle("Open", {.isOn = object.projectedValue(&Switch::on)});
        if (!object->on) return Form({Section({.header = "One"}, {toggle, rest})});
        return Form({Section({.header = "One"}, {Button("More", [] {}), toggle, rest})});
    }
};

QString nameOf(QWidget* widget) {
    return widget ? QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) : "";
}
QString focusedName() { return nameOf(QApplication::focusWidget()); }

/// The button that assistive technology knows by this name.
QAbstractButton& buttonIn(const QWidget& host, const QString& name) {
    for (auto* const button : host.findChildren<QAbstractButton*>())
        if (nameOf(button) == name) return *button;
    throw std::runtime_error("No button " + name.toStdString());
}

void settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

TEST(ViewTree, ScrollsToWhereTheKeyboardComesFromOutside) {
    Shown shown(ScrollView(VStack({}, {box(10, 400), Button("Last", [] {})})), {400, 1000});
    const auto& area = *shown.host.findChild<QScrollArea*>();
    auto& bar = *area.verticalScrollBar();
    EXPECT_EQ(bar.maximum(), 0);
    const QSize content = area.widget()->size();
    shown.host.resize(400, 200);
    EXPECT_EQ(bar.maximum(), content.height() - 200);
    EXPECT_EQ(area.viewport()->width(), content.width()) << "the bar takes no room";
    EXPECT_EQ(bar.value(), 0);
    buttonIn(shown.host, "Last").setFocus(Qt::BacktabFocusReason);
    EXPECT_EQ(bar.value(), bar.maximum());

    bar.setValue(10);
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(&shown.host);
    EXPECT_EQ(focusedName(), "Last");
    EXPECT_EQ(bar.value(), 10);
}

TEST(ViewTree, DrawnAnewItKeepsFocusAndScrollPosition) {
    const auto object = std::make_shared<Switch>();
    const Shown shown(Settings{object});
    buttonIn(shown.host, "Open").setFocus();
    auto& bar = *shown.host.findChild<QScrollArea*>()->verticalScrollBar();
    bar.setValue(30);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    settle();
    EXPECT_EQ(focusedName(), "Open");
    EXPECT_TRUE(buttonIn(shown.host, "Open").isChecked());
    EXPECT_EQ(bar.value(), 30);
    EXPECT_TRUE(object->on);

    // What has come stands where it belongs, for the Tab key too.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "More");

    // And is gone again, although it had the focus.
    object->on = false;
    settle();
    EXPECT_EQ(shown.host.findChildren<QAbstractButton*>().size(), 1);
}
