#include "SwiftUI/HostView+Private.h"
#include "SwiftUI/SwiftUI.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {

struct Switch : ObservableObject {
    Published<bool> on{*this, false};
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

QAbstractButton& buttonIn(const QWidget& host, const QString& name) {
    for (auto* const button : host.findChildren<QAbstractButton*>())
        if (QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name) == name)
            return *button;
    throw std::runtime_error("No button " + name.toStdString());
}

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
    }
    const Shown shown(
        Button({.action = [&] { presses = -1; }, .label = label}).buttonStyle(ButtonStyle::plain));
    QAbstractButton& button = buttonIn(shown.host, "Left, Right");
    QTest::mouseClick(&button, Qt::LeftButton, {}, {8, button.height() / 2});
    EXPECT_EQ(presses, -1);
}

TEST(SwiftUIControl, AToggleAndItsBindingAgree) {
    const auto object = std::make_shared<Switch>();
    Shown shown(Settings{object});
    QAbstractButton& toggle = buttonIn(shown.host, "Open");
    EXPECT_FALSE(toggle.isChecked());
    QTest::mouseClick(&toggle, Qt::LeftButton);
    EXPECT_TRUE(object->on);
    object->on = false;
    QApplication::processEvents();
    EXPECT_FALSE(toggle.isChecked());
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

TEST(SwiftUIControl, AppearsWheneverItComesOnTheScreen) {
    int appearances = 0;
    HostView host(Text("Text").onAppear([&] { ++appearances; }).padding(4));
    EXPECT_EQ(appearances, 0);
    host.show();
    EXPECT_EQ(appearances, 1);
    host.hide();
    host.show();
    EXPECT_EQ(appearances, 2);
}

TEST(SwiftUIControl, FollowsThePalette) {
    HostView host(Text("Text").foregroundStyle(HierarchicalShapeStyle::secondary));
    host.show();
    QPalette dark(QColor(50, 50, 50), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    host.setPalette(dark);
    QApplication::processEvents();
    const auto& label = *host.findChild<QLabel*>();
    const QColor color = label.palette().color(label.foregroundRole());
    EXPECT_EQ(color.rgb(), QColor(Qt::white).rgb());
    EXPECT_LT(color.alpha(), 255);
}

TEST(SwiftUIAccessibility, ReadsEachThingOnce) {
    int presses = 0;
    const View tag = HStack({Image({.systemName = "lock.fill"}), Text("TAG")})
                         .accessibilityElement({.children = AccessibilityChildBehavior::ignore})
                         .accessibilityLabel("Tagged");
    const auto object = std::make_shared<Switch>();
    const ObservedObject<Switch> observed(object);
    Shown shown(
        VStack({}, {tag,
                    Button({.action = [&] { ++presses; }, .label = HStack({Text("Row"), tag})})
                        .accessibilityHint("Explains."),
                    Toggle("Fish & chips", {.isOn = observed.projectedValue(&Switch::on)})}));
    QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&shown.host);
    struct Reading {
        QAccessible::Role role;
        const char* name;
        const char* description;
    };
    const std::vector<Reading> readings = {{QAccessible::StaticText, "Tagged", ""},
                                           {QAccessible::Button, "Row, Tagged", "Explains."},
                                           {QAccessible::CheckBox, "Fish & chips", ""}};
    ASSERT_EQ(window->childCount(), static_cast<int>(readings.size()));
    for (std::size_t i = 0; i < readings.size(); ++i) {
        QAccessibleInterface* const child = window->child(static_cast<int>(i));
        EXPECT_EQ(child->role(), readings[i].role);
        EXPECT_EQ(child->text(QAccessible::Name), readings[i].name);
        EXPECT_EQ(child->text(QAccessible::Description), readings[i].description);
        EXPECT_EQ(child->childCount(), 0);
    }
    auto* const action = window->child(1)->actionInterface();
    action->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(presses, 0) << "the asker would wait for all that follows";
    QApplication::processEvents();
    EXPECT_EQ(presses, 1);
}
