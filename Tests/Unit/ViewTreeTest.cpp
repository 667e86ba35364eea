// Where views stand, and what pressing them does.

#include "SwiftUI/Qt/HostView.h"
#include "SwiftUI/SwiftUI.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
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
    return Form({Section(
        {.header = "First", .footer = Text(text)},
        {Wrapped{row}, Button({.action = [] {}, .label = row}).buttonStyle(ButtonStyle::plain)})});
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
    for (const int width : {240, 333, 900}) {
        SCOPED_TRACE(width);
        const Shown shown(rowsOfText(text), {width, 2000});
        const auto labels = shown.host.findChildren<QLabel*>();
        ASSERT_EQ(labels.size(), 8);
        EXPECT_EQ(labels[1]->height() > 2 * labels[1]->fontMetrics().height() - 4, width < 900);
        for (const QLabel* label : labels) {
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            EXPECT_GE(shown.place(*label).left(), 0);
            EXPECT_LE(shown.place(*label).right(), width);
            for (const QLabel* other : labels)
                EXPECT_TRUE(label == other || !shown.place(*label).intersects(shown.place(*other)))
                    << label->text().toStdString() << " and " << other->text().toStdString();
        }
    }
}

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

TEST(ViewTree, AContentShapeMakesTheEmptyMiddleCount) {
    const View label = HStack({Text("Left"), Spacer(), Text("Right")});
    for (const bool hasShape : {false, true}) {
        int presses = 0;
        const Shown shown(Button({.action = [&] { ++presses; },
                                  .label = hasShape ? label.contentShape(Rectangle()) : label})
                              .buttonStyle(ButtonStyle::plain));
        QAbstractButton& button = buttonIn(shown.host, "Left, Right");
        QTest::mouseClick(&button, Qt::LeftButton, {}, button.rect().center());
        EXPECT_EQ(presses, hasShape);
        const QPoint text(8, button.height() / 2), aside(5, button.height() + 40);
        QTest::mousePress(&button, Qt::LeftButton, {}, text);
        QTest::mouseMove(&button, aside); // Dragged off, it is let go without a press.
        QTest::mouseRelease(&button, Qt::LeftButton, {}, aside);
        EXPECT_EQ(presses, hasShape);
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
