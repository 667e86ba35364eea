#include "AppKit/AppKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>

using testing::ElementsAre;

namespace {

struct Program : NSObject, NSMenuDelegate {
    void choose(NSMenuItem& item) { log.push_back(item.title()); }
    void menuDidClose(NSMenu&) override { log.emplace_back("closed"); }
    std::vector<std::string> log;
};

class MenuTest : public testing::Test {
protected:
    std::shared_ptr<NSMenuItem> add(NSMenu& to, const std::string& title,
                                    const std::string& key = "") const {
        const auto item = std::make_shared<NSMenuItem>(title, &Program::choose, key);
        item->setTarget(program);
        to.addItem(item);
        return item;
    }

    void SetUp() override {
        menu->setDelegate(program);
        add(*menu, "First & last", "n")->setKeyEquivalentModifierMask(0x1c0000);
        menu->addItem(NSMenuItem::separatorItem());
        add(*submenu, "Inner", "i");
        const auto more = std::make_shared<NSMenuItem>("More", nullptr, "");
        more->setSubmenu(submenu);
        menu->addItem(more);
    }

    /// Opens the menu and does something with it as it stands there; closes it if that did not.
    void open(const std::function<void(QMenu&)>& act) const {
        QTimer::singleShot(0, [&] {
            auto* const native = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(native);
            act(*native);
            native->close();
        });
        NSView view(NSRect{});
        NSMenu::popUpContextMenu(menu, NSEvent(NSEventTypeRightMouseDown, 0), view);
    }

    static void strike(QMenu& native, int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&native, &press);
    }

    std::shared_ptr<Program> program = std::make_shared<Program>();
    std::shared_ptr<NSMenu> menu = std::make_shared<NSMenu>();
    std::shared_ptr<NSMenu> submenu = std::make_shared<NSMenu>("More");
};

} // namespace

TEST_F(MenuTest, RunsWhatIsChosenOnceItHasClosed) {
    const auto keys = [](int key, Qt::KeyboardModifiers modifiers) {
        return [=](QMenu& native) { strike(native, key, modifiers); };
    };
    const std::pair<std::function<void(QMenu&)>, const char*> cases[] = {
        {[](QMenu& native) { native.actions()[2]->menu()->actions()[0]->trigger(); }, "Inner"},
        {keys(Qt::Key_N, Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier), "First & last"},
        {keys(Qt::Key_I, Qt::MetaModifier), "Inner"},
        {keys(Qt::Key_I, Qt::MetaModifier | Qt::AltModifier), nullptr},
        {keys(Qt::Key_N, Qt::MetaModifier), nullptr},
    };
    for (const auto& [act, chosen] : cases) {
        std::vector<std::string> expected = {"closed"};
        if (chosen) expected.emplace_back(chosen);
        program->log.clear();
        open(act);
        EXPECT_EQ(program->log, expected);
    }
}

TEST_F(MenuTest, LeavesAnItemAloneWhoseTargetHasGone) {
    const auto orphan = std::make_shared<NSMenuItem>("Orphan", &Program::choose, "o");
    menu->addItem(orphan);
    EXPECT_FALSE(orphan->isEnabled()) << "without a target";
    auto target = std::make_shared<Program>();
    orphan->setTarget(target);
    EXPECT_TRUE(orphan->isEnabled());
    open([&](QMenu& native) {
        target = nullptr;
        native.actions()[3]->trigger();
    });
    EXPECT_FALSE(orphan->isEnabled());
    open([](QMenu& native) { strike(native, Qt::Key_O, Qt::MetaModifier); });
    EXPECT_THAT(program->log, ElementsAre("closed", "closed"));
}
