#include "SwiftUI/Qt/HostView.h"
#include "SwiftUI/SwiftUI.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <limits>
#include <ostream>

static std::ostream& operator<<(std::ostream& out, const QRect& rect) {
    return out << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
}

namespace {

using testing::ElementsAreArray;

constexpr double infinity = std::numeric_limits<double>::infinity();

View fill() { return Rectangle().fill(Color::red); }
View box(double width, double height) { return fill().frame({.width = width, .height = height}); }

/// Wraps in a body, as the program's own views do.
struct Wrapped {
    View view;
    View body() const { return view; }
};

QRect placeIn(const QWidget& host, const QWidget& widget) {
    return {widget.mapTo(&host, QPoint()), widget.size()};
}

struct Layout {
    const char* name;
    View view;
    QSize room;
    std::vector<QRect> places; ///< Of the shapes, in the order of the tree, a background first.
};

std::vector<QRect> placesIn(const Layout& layout) {
    HostView host(layout.view);
    host.resize(layout.room);
    host.show();
    std::vector<QRect> places;
    for (const auto* widget : host.findChildren<QWidget*>())
        places.push_back(placeIn(host, *widget));
    return places;
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

} // namespace

TEST(SwiftUILayout, GivesEachViewItsPlace) {
    const Color color = Color::red;
    const std::vector<Layout> layouts = {
        {"a spacer takes what is left",
         HStack({.spacing = 0}, {box(20, 10), Spacer({.minLength = 0}), box(30, 20)}),
         {200, 40},
         {{0, 15, 20, 10}, {170, 10, 30, 20}}},
        {"a spacer keeps its least length and adds no spacing",
         HStack({box(20, 10), Spacer(), box(30, 10)}),
         {30, 10},
         {{-14, 0, 20, 10}, {14, 0, 30, 10}}},
        {"a chosen spacing stands around a spacer too",
         HStack({.spacing = 10}, {box(20, 10), Spacer({.minLength = 0}), box(20, 10)}),
         {60, 10},
         {{0, 0, 20, 10}, {40, 0, 20, 10}}},
        {"stacks centre, 8 apart",
         VStack({}, {box(20, 10), box(40, 10)}),
         {40, 28},
         {{10, 0, 20, 10}, {0, 18, 40, 10}}},
        {"leading is the left",
         VStack({.alignment = HorizontalAlignment::leading, .spacing = 2},
                {box(20, 10), box(40, 10)}),
         {40, 22},
         {{0, 0, 20, 10}, {0, 12, 40, 10}}},
        {"top is the top",
         HStack({.alignment = VerticalAlignment::top, .spacing = 0}, {box(20, 10), box(20, 30)}),
         {40, 30},
         {{0, 0, 20, 10}, {20, 0, 20, 30}}},
        {"what bends leaves room for what does not",
         HStack({.spacing = 0}, {fill(), box(30, 10), fill()}),
         {130, 10},
         {{0, 0, 50, 10}, {50, 0, 30, 10}, {80, 0, 50, 10}}},
        {"each of a range is a child of the stack around",
         VStack({.spacing = 5}, {ForEach(
                                     std::vector<std::string>{"a", "b"},
                                     [](const std::string& text) { return text; },
                                     [](const std::string&) { return box(10, 10); }),
                                 box(10, 10)}),
         {10, 40},
         {{0, 0, 10, 10}, {0, 15, 10, 10}, {0, 30, 10, 10}}},
        {"padding lies within a background outside it",
         box(20, 20).padding(5).background(Capsule().fill(color)),
         {30, 30},
         {{0, 0, 30, 30}, {5, 5, 20, 20}}},
        {"padding lies around a background inside it",
         box(20, 20).background(Capsule().fill(color)).padding(5),
         {30, 30},
         {{5, 5, 20, 20}, {5, 5, 20, 20}}},
        {"padding on some edges",
         fill().padding(Edge::Set::horizontal, 8).padding(Edge::Set::vertical, 3),
         {40, 20},
         {{8, 3, 24, 14}}},
        {"a frame centres, at its own height",
         box(20, 10).frame({.width = 50}).background(fill()),
         {60, 10},
         {{5, 0, 50, 10}, {20, 0, 20, 10}}},
        {"a frame without end, leading",
         box(20, 10).frame({.maxWidth = infinity, .alignment = Alignment::leading}),
         {80, 10},
         {{0, 0, 20, 10}}},
        {"a fixed axis asks for the ideal length",
         fill().fixedSize({.horizontal = true, .vertical = false}),
         {50, 30},
         {{20, 0, 10, 30}}},
        {"a divider crosses its stack",
         VStack({.spacing = 0}, {box(10, 10), Divider(), box(10, 10)}),
         {60, 21},
         {{25, 0, 10, 10}, {0, 10, 60, 1}, {25, 11, 10, 10}}},
        {"the whole stands in the middle", box(20, 10), {60, 30}, {{20, 10, 20, 10}}},
    };
    for (const Layout& layout : layouts) {
        SCOPED_TRACE(layout.name);
        EXPECT_THAT(placesIn(layout), ElementsAreArray(layout.places));
        EXPECT_THAT(placesIn({layout.name, Wrapped{layout.view}, layout.room, {}}),
                    ElementsAreArray(layout.places));
    }
}

TEST(SwiftUILayout, TextIsNeverCut) {
    const std::string text = "A sentence that is too long for one line of a narrow window, and "
                             "must be read to its end.";
    int wrapped = 0;
    for (const int width : {240, 333, 540, 900}) {
        SCOPED_TRACE(width);
        HostView host(rowsOfText(text));
        host.resize(width, 2000);
        host.show();
        const auto labels = host.findChildren<QLabel*>();
        ASSERT_EQ(labels.size(), 13);
        for (const QLabel* label : labels) {
            SCOPED_TRACE(label->text().toStdString());
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            EXPECT_GE(placeIn(host, *label).left(), 0);
            EXPECT_LE(placeIn(host, *label).right(), width);
            wrapped += label->height() > 2 * label->fontMetrics().height() - 4;
            for (const QLabel* other : labels)
                EXPECT_TRUE(label == other ||
                            !placeIn(host, *label).intersects(placeIn(host, *other)))
                    << other->text().toStdString();
        }
    }
    EXPECT_GT(wrapped, 0);
}

TEST(SwiftUILayout, AFormScrollsWhereItIsTallerThanItsRoom) {
    HostView host(rowsOfText("Text"));
    host.resize(400, 1000);
    host.show();
    auto* const area = host.findChild<QScrollArea*>();
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
    const int widthOfRows = area->widget()->width();
    host.resize(400, 100);
    EXPECT_EQ(area->verticalScrollBar()->maximum(), area->widget()->height() - 100);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(area->widget()->width(), widthOfRows);
    EXPECT_TRUE(area->verticalScrollBar()->isVisible());
}

TEST(SwiftUILayout, AWindowTakesTheIdealSize) {
    EXPECT_EQ(HostView(VStack({}, {box(20, 10), Spacer(), box(30, 10.5)})).sizeHint(),
              QSize(30, 29));
    EXPECT_EQ(HostView(ScrollView(box(20, 900)).frame({.width = 50, .height = 60})).sizeHint(),
              QSize(50, 60));
}
