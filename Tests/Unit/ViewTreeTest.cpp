// Where views stand, and what pressing them does.

#include "FakeLoginService.h"
#include "HostedButtons.h"

#include "GeneralSettings.h"

#include "SwiftUI/Qt/HostView.h"
#include "SwiftUI/SwiftUI.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {

View fill() { return Rectangle().fill(Color::red); }
View box(double width, double height) { return fill().frame({.width = width, .height = height}); }

/// Wraps in a body, as the program's own views do.
struct Wrapped {
    View view;
    View body() const { return view; }
};

/// On the screen, with the keyboard.
struct Shown {
    explicit Shown(const View& view, const QSize& size = {300, 200}) : host(view) {
        host.resize(size);
        host.show();
        host.activateWindow();
        QApplication::setActiveWindow(&host);
    }
    QRect place(const QWidget& widget) const {
        return {widget.mapTo(&host, QPoint()), widget.size()};
    }

    HostView host;
};

struct Layout {
    const char* name;
    View view;
    QSize room;
    std::vector<QRect> places; ///< Of the shapes, in the order of the tree, a background first.
};

std::vector<Layout> layouts() {
    const auto boxes = ForEach(
        std::vector{10, 20}, [](int side) { return side; }, [](int side) { return box(side, 10); });
    return {
        {"a spacer takes what is left",
         HStack({.spacing = 5}, {box(20, 10), Spacer({.minLength = 0}), box(30, 20)}),
         {200, 40},
         {{0, 15, 20, 10}, {170, 10, 30, 20}}},
        {"a spacer keeps its least length and adds no spacing",
         HStack({box(20, 10), Spacer(), box(30, 10)}),
         {30, 10},
         {{-14, 0, 20, 10}, {14, 0, 30, 10}}},
        {"each of a range is a child of the stack around, 8 apart",
         VStack({}, {boxes, box(40, 10)}),
         {40, 46},
         {{15, 0, 10, 10}, {10, 18, 20, 10}, {0, 36, 40, 10}}},
        {"what bends leaves room for what does not",
         HStack({.alignment = VerticalAlignment::top, .spacing = 0}, {fill(), box(30, 4), fill()}),
         {130, 10},
         {{0, 0, 50, 10}, {50, 0, 30, 4}, {80, 0, 50, 10}}},
        {"a background is as large as the frame before it, not as the padding behind it",
         box(20, 10).frame({.width = 50}).background(fill()).padding(5),
         {80, 20},
         {{15, 5, 50, 10}, {30, 5, 20, 10}}},
        {"a fixed axis asks for the ideal length",
         fill().fixedSize({.horizontal = true, .vertical = false}),
         {50, 30},
         {{20, 0, 10, 30}}},
    };
}

/// Texts as in the rows of a form, with much around them.
View rowsOfText(const std::string& text) {
    const View row = HStack(
        {.spacing = 10},
        {VStack(
             {.alignment = HorizontalAlignment::leading, .spacing = 2},
             {Text(text),
              Text(text).font(Font::caption).fixedSize({.horizontal = false, .vertical = true})}),
         Spacer(), Text("Tag").padding(4).background(Capsule().fill(Color::secondary))});
    return Form({Section({.header = "First", .footer = Text(text)},
                         {Wrapped{row},
                          Button({.action = [] {}, .label = row}).buttonStyle(ButtonStyle::plain)}),
                 Section({.header = "Second"}, {Wrapped{row}, Text(text)})});
}

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

std::string focusedName() {
    QWidget* const widget = QApplication::focusWidget();
    if (!widget) return {};
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
}

void settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

TEST(ViewTree, GivesEachViewItsPlace) {
    for (const Layout& layout : layouts()) {
        SCOPED_TRACE(layout.name);
        for (const View& view : {layout.view, View(Wrapped{layout.view})}) {
            const Shown shown(view, layout.room);
            std::vector<QRect> places;
            for (const auto* widget : shown.host.findChildren<QWidget*>())
                places.push_back(shown.place(*widget));
            EXPECT_THAT(places, testing::ElementsAreArray(layout.places));
        }
    }
}

TEST(ViewTree, NeverCutsAText) {
    const std::string text = "A sentence that is too long for one line of a narrow window, and "
                             "must be read to its end.";
    int wrapped = 0;
    for (const int width : {240, 333, 540, 900}) {
        SCOPED_TRACE(width);
        const Shown shown(rowsOfText(text), {width, 2000});
        const auto labels = shown.host.findChildren<QLabel*>();
        ASSERT_EQ(labels.size(), 13);
        for (const QLabel* label : labels) {
            SCOPED_TRACE(label->text().toStdString());
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            EXPECT_GE(shown.place(*label).left(), 0);
            EXPECT_LE(shown.place(*label).right(), width);
            wrapped += label->height() > 2 * label->fontMetrics().height() - 4;
            for (const QLabel* other : labels)
                EXPECT_TRUE(label == other || !shown.place(*label).intersects(shown.place(*other)))
                    << other->text().toStdString();
        }
    }
    EXPECT_GT(wrapped, 0);
}

TEST(ViewTree, ScrollsAFormThatIsTallerThanItsRoom) {
    Shown shown(rowsOfText("Text"), {400, 1000});
    const auto& area = *shown.host.findChild<QScrollArea*>();
    EXPECT_EQ(area.verticalScrollBar()->maximum(), 0);
    const QSize rows = area.widget()->size();
    shown.host.resize(400, 100);
    EXPECT_EQ(area.verticalScrollBar()->maximum(), rows.height() - 100);
    EXPECT_EQ(area.viewport()->width(), rows.width()) << "the bar takes no room";
    EXPECT_TRUE(area.verticalScrollBar()->isVisible());
}

TEST(ViewTree, ScrollsToWhereTheKeyboardComesFromOutside) {
    Shown shown(ScrollView(VStack({}, {box(10, 400), Button("Last", [] {})})));
    auto& bar = *shown.host.findChild<QScrollArea*>()->verticalScrollBar();
    EXPECT_EQ(bar.value(), 0);
    buttonIn(shown.host, "Last").setFocus(Qt::BacktabFocusReason);
    EXPECT_EQ(bar.value(), bar.maximum());

    bar.setValue(10);
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(&shown.host);
    EXPECT_EQ(focusedName(), "Last");
    EXPECT_EQ(bar.value(), 10);
}

TEST(ViewTree, TheKeysPressTheButtonsThatTheyBelongTo) {
    std::string pressed;
    const auto button = [&](const std::string& name) {
        return Button(name, [&pressed, name] { pressed = name; });
    };
    const Shown shown(VStack(
        {}, {button("Other"), button("Not Now").keyboardShortcut(KeyboardShortcut::cancelAction),
             button("Buy").keyboardShortcut(KeyboardShortcut::defaultAction)}));
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        return std::exchange(pressed, {});
    };
    EXPECT_EQ(press(Qt::Key_Space), "") << "nothing is pressed by a stray one";
    EXPECT_EQ(press(Qt::Key_Return), "Buy");
    EXPECT_EQ(press(Qt::Key_Escape), "Not Now");
    press(Qt::Key_Tab);
    EXPECT_EQ(press(Qt::Key_Space), "Other");
    EXPECT_EQ(press(Qt::Key_Enter), "Buy");
}

TEST(ViewTree, AContentShapeMakesTheEmptyMiddleCount) {
    const View label = HStack({Text("Left"), Spacer(), Text("Right")});
    for (const bool hasShape : {false, true}) {
        int presses = 0;
        const Shown shown(Button({.action = [&] { ++presses; },
                                  .label = hasShape ? label.contentShape(Rectangle()) : label})
                              .buttonStyle(ButtonStyle::plain));
        QAbstractButton& button = buttonIn(shown.host, "Left, Right");
        QTest::mouseClick(&button, Qt::LeftButton, {}, button.rect().center());
        EXPECT_EQ(presses, hasShape ? 1 : 0);
        QTest::mouseClick(&button, Qt::LeftButton, {}, {8, button.height() / 2});
        EXPECT_EQ(presses, hasShape ? 2 : 1);
        // Dragged off, it is let go without a press.
        for (const QPoint aside : {QPoint(-40, 5), QPoint(5, button.height() + 40)}) {
            QTest::mousePress(&button, Qt::LeftButton, {}, {8, button.height() / 2});
            QTest::mouseMove(&button, aside);
            QTest::mouseRelease(&button, Qt::LeftButton, {}, aside);
            EXPECT_EQ(presses, hasShape ? 2 : 1);
        }
    }
}

TEST(ViewTree, EachControlShowsThatThePointerIsOnIt) {
    const ObservedObject<Switch> object = std::make_shared<Switch>();
    const Button button("Press", [] {});
    const Shown shown(VStack({}, {Toggle("Turn", {.isOn = object.projectedValue(&Switch::on)}),
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

TEST(ViewTree, AnActionMayReplaceItsOwnButton) {
    struct Replaced {
        ObservedObject<Switch> object;
        View body() const {
            if (object->on) return Text("Gone");
            return Button("Go", [object = object] {
                object->on = true;
                settle();
            });
        }
    };
    const Shown shown(Replaced{std::make_shared<Switch>()});
    QTest::mouseClick(&buttonIn(shown.host, "Go"), Qt::LeftButton);
    EXPECT_EQ(shown.host.findChild<QLabel*>()->text(), "Gone");
}

TEST(ViewTree, RunsItsActionsEachTimeItAppears) {
    const auto service = std::make_shared<FakeLoginService>();
    installMainAppService(service);
    HostView host(GeneralSettings{.login = std::make_shared<LoginSwitch>()});
    for (const bool enabled : {false, true, false}) {
        service->now = SMAppServiceStatus(enabled);
        host.show();
        QApplication::processEvents();
        EXPECT_EQ(buttonIn(host, "Open at login").isChecked(), enabled);
        host.hide();
    }
    installMainAppService(nullptr);
}
