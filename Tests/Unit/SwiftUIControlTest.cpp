#include "HostedButtons.h"

#include "SwiftUI/Qt/HostView.h"
#include "SwiftUI/SwiftUI.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {

struct Switch : ObservableObject {
    std::vector<bool> oldValues;
    Published<bool> on{*this, false, [this](bool oldValue) { oldValues.push_back(oldValue); }};
};

/// More of it stands there while the switch is on.
struct Settings {
    ObservedObject<Switch> object;

    View body() const {
        const View rest = Rectangle().fill(Color::red).frame({.width = 10, .height = 900});
        const View toggle = Toggle("Open", {.isOn = object.projectedValue(&Switch::on)});
        const Button last("Last", [] {});
        if (!object->on) return Form({Section({.header = "One"}, {toggle, rest, last})});
        return Form({Section({.header = "One"}, {Button("More", [] {}), toggle, rest, last})});
    }
};

/// A host on the screen, with the keyboard.
struct Shown {
    explicit Shown(const View& view, const QSize& size = {300, 200}) : host(view) {
        host.resize(size);
        host.show();
        host.activateWindow();
        QApplication::setActiveWindow(&host);
    }
    HostView host;
};

std::string focusedName() {
    QWidget* const widget = QApplication::focusWidget();
    return widget ? QAccessible::queryAccessibleInterface(widget)
                        ->text(QAccessible::Name)
                        .toStdString()
                  : "";
}

} // namespace

TEST(SwiftUIControl, KeysPressTheButtonsThatTheyBelongTo) {
    std::string pressed;
    Shown shown(VStack({}, {ScrollView(Rectangle().fill(Color::red).frame({.height = 900})),
                            Button("Other", [&] { pressed += "other "; }),
                            Button("Not Now", [&] { pressed += "cancel "; })
                                .keyboardShortcut(KeyboardShortcut::cancelAction),
                            Button("Buy", [&] {
                                pressed += "buy ";
                            }).keyboardShortcut(KeyboardShortcut::defaultAction)}));
    const auto press = [&](Qt::Key key) {
        pressed.clear();
        QTest::keyClick(QApplication::focusWidget(), key);
        return pressed;
    };
    ASSERT_EQ(QApplication::focusWidget(), &shown.host) << "nothing is pressed by a stray Space";
    EXPECT_EQ(press(Qt::Key_Space), "");
    EXPECT_EQ(press(Qt::Key_Return), "buy ");
    EXPECT_EQ(press(Qt::Key_Escape), "cancel ");
    press(Qt::Key_Tab);
    ASSERT_TRUE(qobject_cast<QScrollArea*>(QApplication::focusWidget()));
    EXPECT_EQ(press(Qt::Key_Return), "buy ");
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "Other");
    EXPECT_EQ(press(Qt::Key_Space), "other ");
    EXPECT_EQ(press(Qt::Key_Enter), "buy ");
    press(Qt::Key_Tab);
    EXPECT_EQ(press(Qt::Key_Space), "cancel ");
}

TEST(SwiftUIControl, AContentShapeMakesTheEmptyMiddleCount) {
    int presses = 0;
    const View label = HStack({Text("Left"), Spacer(), Text("Right")});
    for (const bool hasShape : {false, true}) {
        const Shown shown(Button({.action = [&] { ++presses; },
                                  .label = hasShape ? label.contentShape(Rectangle()) : label})
                              .buttonStyle(ButtonStyle::plain));
        QAbstractButton& button = buttonIn(shown.host, "Left, Right");
        QTest::mouseClick(&button, Qt::LeftButton, {}, button.rect().center());
        EXPECT_EQ(presses, hasShape ? 1 : 0);
        // Dragged off, it is let go without a press.
        for (const QPoint aside : {QPoint(-40, 5), QPoint(5, button.height() + 40)}) {
            QTest::mousePress(&button, Qt::LeftButton, {}, button.rect().center());
            QTest::mouseMove(&button, aside);
            EXPECT_FALSE(button.isDown());
            QTest::mouseRelease(&button, Qt::LeftButton, {}, aside);
            EXPECT_EQ(presses, hasShape ? 1 : 0);
        }
    }
    const Shown shown(
        Button({.action = [&] { presses = -1; }, .label = label}).buttonStyle(ButtonStyle::plain));
    QAbstractButton& button = buttonIn(shown.host, "Left, Right");
    QTest::mouseClick(&button, Qt::LeftButton, {}, {8, button.height() / 2});
    EXPECT_EQ(presses, -1);
}

TEST(SwiftUIControl, EachControlShowsThatThePointerIsOnIt) {
    const auto object = std::make_shared<Switch>();
    const Button button("Press", [] {});
    Shown shown(
        VStack({}, {Toggle("Turn", {.isOn = ObservedObject(object).projectedValue(&Switch::on)}),
                    button, View(button).buttonStyle(ButtonStyle::plain)}));
    for (auto* const control : shown.host.findChildren<QAbstractButton*>())
        for (const bool on : {false, true}) {
            control->setChecked(on);
            const QImage before = control->grab().toImage();
            EXPECT_TRUE(control->testAttribute(Qt::WA_Hover));
            control->setAttribute(Qt::WA_UnderMouse);
            EXPECT_NE(control->grab().toImage(), before) << control->text().toStdString() << on;
            control->setAttribute(Qt::WA_UnderMouse, false);
        }
}

TEST(SwiftUIControl, DrawnAnewItKeepsFocusAndScrollPosition) {
    const auto object = std::make_shared<Switch>();
    Shown shown(Settings{object});
    buttonIn(shown.host, "Open").setFocus();
    auto& bar = *shown.host.findChild<QScrollArea*>()->verticalScrollBar();
    bar.setValue(30);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QApplication::processEvents();
    EXPECT_EQ(focusedName(), "Open");
    EXPECT_TRUE(buttonIn(shown.host, "Open").isChecked());
    EXPECT_EQ(bar.value(), 30);
    EXPECT_TRUE(object->on);

    // What has come stands where it belongs, for the Tab key too.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "More");
    EXPECT_LT(buttonIn(shown.host, "More").y(), buttonIn(shown.host, "Open").y());

    // And is gone again, although it had the focus.
    object->on = false;
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shown.host.findChildren<QAbstractButton*>().size(), 2);
}

TEST(SwiftUIControl, AnActionMayReplaceItsOwnButton) {
    const auto object = std::make_shared<Switch>();
    struct Replaced {
        ObservedObject<Switch> object;
        View body() const {
            if (object->on) return Text("Gone");
            return Button("Go", [object = object] {
                object->on = true;
                QApplication::processEvents();
                QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            });
        }
    };
    const Shown shown(Replaced{object});
    QTest::mouseClick(&buttonIn(shown.host, "Go"), Qt::LeftButton);
    EXPECT_EQ(shown.host.findChild<QLabel*>()->text(), "Gone");
}

TEST(Published, AnnouncesBeforeItStores) {
    Switch object;
    std::vector<bool> seen;
    auto subscription = object.objectWillChange.sink([&] { seen.push_back(object.on); });
    object.on = true;
    object.on = true;
    EXPECT_EQ(seen, (std::vector{false, true}));
    EXPECT_EQ(object.oldValues, (std::vector{false, true}));
    subscription.reset();
    object.on = false;
    EXPECT_EQ(seen.size(), 2u);
}
