#pragma once

#include "AppKit/NSMenu.h"
#include "WindowServer/ToolkitWindows.h"

#include <QMenu>

#include <functional>
#include <map>
#include <memory>

/// A menu as the toolkit shows it, with its submenus.
class NativeMenu : public QMenu {
    Q_OBJECT

public:
    using Chosen = std::function<void(const std::shared_ptr<NSMenuItem>&)>;

    /// Calls back at each choice, by the mouse, the keyboard or an item's own keys.
    NativeMenu(const NSMenu& menu, Chosen chosen, QWidget* parent = nullptr);

protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void add(const std::shared_ptr<NSMenuItem>& item);
    QAction* actionFor(const QKeyEvent& press) const;
    void keepOnScreen();
    void cutCorners();

    const Chosen m_chosen;
    const bool m_translucent;
    std::shared_ptr<WindowServer::ToolkitWindow> m_held; ///< While its corners are cut.
    std::map<const QAction*, std::shared_ptr<NSMenuItem>> m_items;
};
