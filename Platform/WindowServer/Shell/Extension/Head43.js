/* exported init */
const {Clutter, Gio, GLib, Meta, Shell, St} = imports.gi;
const Main = imports.ui.main;
const PanelMenu = imports.ui.panelMenu;

// Enabled on the lock screen too: what it hides is to stay hidden as that comes and goes.
function init() {
    let desk = null;
    return {
        enable() { desk = new Desk(); },
        disable() { desk.destroy(); desk = null; },
    };
}
