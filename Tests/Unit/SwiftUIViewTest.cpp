#include "SwiftUIDescription.h"

#include "SwiftUI/SwiftUI.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct Tag {
    View body() const {
        return HStack({.spacing = 4}, {Image({.systemName = "lock.fill"}), Text("TAG")})
            .padding(Edge::Set::horizontal, 8)
            .background(Capsule().fill(Color::secondary.opacity(0.5)))
            .accessibilityElement({.children = AccessibilityChildBehavior::ignore})
            .accessibilityLabel("Tagged");
    }
};

struct Switch : ObservableObject {
    std::vector<bool> oldValues;
    Published<bool> on{*this, false, [this](bool oldValue) { oldValues.push_back(oldValue); }};
};

} // namespace

TEST(SwiftUIView, IsReadAsData) {
    struct Fruit {
        std::string id;
    };
    const std::vector<Fruit> fruits = {{"apple"}, {"pear"}};
    const View tree = VStack({.alignment = HorizontalAlignment::leading, .spacing = 14},
                             {ForEach(fruits, &Fruit::id,
                                      [](const Fruit& fruit) { return Text::verbatim(fruit.id); }),
                              Tag(), Spacer({.minLength = 0})})
                          .font(Font::title2.bold())
                          .frame({.maxWidth = std::numeric_limits<double>::infinity(),
                                  .alignment = Alignment::leading});
    EXPECT_EQ(describe(tree), R"(VStack(leading, spacing 14)
    ForEach(apple)
        Text(verbatim "apple")
    ForEach(pear)
        Text(verbatim "pear")
    HStack(center, spacing 4)
        Image(lock.fill)
        Text("TAG")
    .padding(horizontal, 8)
    .background
        Capsule.fill(Color::secondary opacity 0.5)
    .accessibilityElement(children ignore)
    .accessibilityLabel("Tagged")
    Spacer(minLength 0)
.font(title2 bold)
.frame(maxWidth inf, leading)
)");
}

TEST(SwiftUIView, AButtonIsPressedByWhatItReads) {
    int presses = 0;
    const View tree = Form(
        {Section({.header = "Rows"}, {Button("Other", [] { FAIL(); }),
                                      Button({.action = [&] { ++presses; },
                                              .label = HStack({Text("Strength"), Spacer(), Tag()})})
                                          .buttonStyle(ButtonStyle::plain)})});
    ASSERT_TRUE(actionOf(tree, "Strength, Tagged"));
    actionOf(tree, "Strength, Tagged")();
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(actionOf(tree, "Strength"));
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

TEST(ObservedObject, IsBoundAndItsReadingIsNoted) {
    const auto object = std::make_shared<Switch>();
    const ObservedObject<Switch> observed(object);
    const ObservationScope scope;
    const Binding<bool> binding = observed.projectedValue(&Switch::on);
    EXPECT_FALSE(observed->on);
    binding.setWrappedValue(true);
    EXPECT_TRUE(object->on);
    EXPECT_TRUE(binding.wrappedValue());
    ASSERT_EQ(scope.objects().size(), 1u);
    EXPECT_EQ(scope.objects().front(), object);
}
