import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import St from 'gi://St';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import * as PanelMenu from 'resource:///org/gnome/shell/ui/panelMenu.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

// Enabled on the lock screen too: what it hides is to stay hidden as that comes and goes.
export default class extends Extension {
    enable() { this._desk = new Desk(); }
    disable() { this._desk.destroy(); this._desk = null; }
}
