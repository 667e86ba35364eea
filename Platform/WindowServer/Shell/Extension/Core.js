
// What one program may do in the Shell: cover the monitors, have windows of its own above the
// covers, a key and an icon. It says when; nothing here knows why.

const objectPath = '/com/vardek/NimbrelLite';
const interfaceName = 'com.vardek.NimbrelLite.Shell';

/// What the program asks for, and the types of what comes with it. What fails is answered by an
/// error, all else by nothing.
const requests = {
    Attach: [], Detach: [],
    Cover: ['d', '(dddd)'], Uncover: [],    // deviation in points; red, green, blue, alpha to 1
    Lift: ['u', 'i', 'b'], Drop: ['u'],     // the X server's number, level, whether it is a popup
    GrabKey: ['s'],                         // accelerator
    ShowIcon: ['s', 'ay', 's'], HideIcon: [], // name, or else PNG; description
};
/// What it is told. `Free` goes to all: it may attach.
const news = {
    Free: [], Gone: [],
    KeyPressed: [], Dismissed: [],
    IconPressed: ['u', 'u', '(iiii)'],      // button, modifiers, place
};
const describe = (kind, table) => Object.entries(table).map(([name, types]) =>
    `<${kind} name="${name}">${types.map(type => `<arg type="${type}"/>`).join('')}</${kind}>`);
const interfaceXml = `<node><interface name="${interfaceName}">
    ${describe('method', requests).join('')}${describe('signal', news).join('')}
</interface></node>`;

/// The calls that are not the same in every version of the Shell.
const Versions = {
    /// 46 names the blur by twice its standard deviation.
    setDeviation(effect, sigma) {
        if ('radius' in effect) effect.radius = 2 * sigma;
        else effect.sigma = sigma;
    },
    /// 48 has moved it from the library to the compositor.
    holdScanOut(held) {
        if (global.compositor?.disable_unredirect)
            held ? global.compositor.disable_unredirect() : global.compositor.enable_unredirect();
        else if (held) Meta.disable_unredirect_for_display(global.display);
        else Meta.enable_unredirect_for_display(global.display);
    },
    /// 48 has moved it from one library to the other.
    drawWhole(whole) {
        const flag = Clutter.DrawDebugFlag.DISABLE_CLIPPED_REDRAWS;
        if (Clutter.add_debug_flags)
            whole ? Clutter.add_debug_flags(0, flag, 0) : Clutter.remove_debug_flags(0, flag, 0);
        else if (whole) Meta.add_clutter_debug_flags(0, flag, 0);
        else Meta.remove_clutter_debug_flags(0, flag, 0);
    },
};

/// Whatever goes wrong here, the Shell goes on.
function guarded(work) {
    return (...args) => {
        try {
            return work(...args);
        } catch (error) {
            logError(error, 'Nimbrel Lite');
            return undefined;
        }
    };
}

/// One cover on each monitor, above all that the Shell draws. Each blurs what is below it as that
/// changes, and lets the input through.
class Covers {
    constructor() {
        this.actor = new Clutter.Actor({name: 'nimbrel-covers'});
        global.stage.add_child(this.actor);
        this._look = null;
    }

    show(look) {
        if (!this._look !== !look) {
            Versions.holdScanOut(look !== null);
            Versions.drawWhole(look !== null); // The edge of a part would show in the blur.
        }
        this._look = look;
        this.layOut();
    }

    layOut() {
        this.actor.destroy_all_children();
        if (!this._look) return;
        const [sigma, [red, green, blue, alpha]] = this._look;
        const {scaleFactor} = St.ThemeContext.get_for_stage(global.stage);
        const [r, g, b] = [red, green, blue].map(value => Math.round(255 * value));
        for (const {x, y, width, height} of Main.layoutManager.monitors) {
            const style = `background-color: rgba(${r}, ${g}, ${b}, ${alpha});`;
            const cover = new St.Widget({reactive: false, x, y, width, height, style});
            if (sigma > 0) {
                const blur = new Shell.BlurEffect({mode: Shell.BlurMode.BACKGROUND, brightness: 1});
                Versions.setDeviation(blur, sigma * scaleFactor);
                cover.add_effect(blur);
            }
            this.actor.add_child(cover);
        }
    }

    destroy() {
        this.show(null);
        this.actor.destroy();
    }
}

/// The X server's number of a window, of which the Shell speaks only in a text.
function numberOf(window) {
    return parseInt(/^0x[0-9a-f]+/.exec(window.get_description() ?? '')?.[0] ?? '0');
}

function move(actor, parent) {
    if (actor.get_parent() === parent) return;
    actor.get_parent()?.remove_child(actor);
    parent.add_child(actor);
}

/// Windows of one process above the covers, in the order of their levels. Below its popups the
/// whole screen takes clicks: one there dismisses them.
class Front {
    constructor(pid, dismiss) {
        this._pid = pid;
        this._wanted = new Map(); // Levels and kinds, by the X server's numbers.
        this._levels = new Map(); // A group of actors for each.
        // Of no size, so that a press on it is one on what it holds. One comes here only while the
        // overview keeps the mouse from all windows.
        this.actor =
            new Clutter.Actor({name: 'nimbrel-front', reactive: true, width: 0, height: 0});
        this.actor.connect('button-press-event', guarded(() => {
            Main.overview.hide();
            return Clutter.EVENT_STOP;
        }));
        global.stage.add_child(this.actor);
        this._catcher = new Clutter.Actor({reactive: true, visible: false});
        this._catcher.add_constraint(new Clutter.BindConstraint({
            source: global.stage, coordinate: Clutter.BindCoordinate.SIZE,
        }));
        const caught = guarded(() => {
            dismiss();
            return Clutter.EVENT_STOP;
        });
        this._catcher.connect('button-press-event', caught);
        this._catcher.connect('touch-event', caught);
        this.actor.add_child(this._catcher);
    }

    lift(number, level, popup) {
        this._wanted.set(number, {level, popup});
        for (const actor of global.get_window_actors()) this.admit(actor.meta_window);
        this._layCatcher();
    }

    admit(window) {
        const wanted = this._wanted.get(numberOf(window));
        if (wanted && window.get_pid() === this._pid)
            move(window.get_compositor_private(), this._group(wanted.level));
    }

    drop(number) {
        if (!this._wanted.delete(number)) return;
        for (const actor of global.get_window_actors()) {
            if (numberOf(actor.meta_window) === number && this.actor.contains(actor))
                move(actor, global.top_window_group);
        }
        this._layCatcher();
    }

    _group(level) {
        if (!this._levels.has(level)) this._levels.set(level, new Clutter.Actor());
        for (const [, group] of [...this._levels].sort(([a], [b]) => a - b)) {
            move(group, this.actor);
            this.actor.set_child_above_sibling(group, null);
        }
        return this._levels.get(level);
    }

    _layCatcher() {
        const popups = [...this._wanted.values()].filter(({popup}) => popup);
        this._catcher.visible = popups.length > 0;
        if (!popups.length) return;
        const lowest = Math.min(...popups.map(({level}) => level));
        this.actor.set_child_below_sibling(this._catcher, this._group(lowest));
    }

    destroy() {
        for (const number of [...this._wanted.keys()]) this.drop(number);
        this.actor.destroy();
    }
}

/// A key that is heard in every mode but those of the lock.
class Key {
    constructor() { this._action = Meta.KeyBindingAction.NONE; }

    grab(accelerator) {
        this.destroy();
        this._action =
            global.display.grab_accelerator(accelerator, Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
        if (!this.is(this._action)) throw new Error('taken');
        const {ALL, LOCK_SCREEN, UNLOCK_SCREEN, LOGIN_SCREEN} = Shell.ActionMode;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(this._action),
            ALL & ~(LOCK_SCREEN | UNLOCK_SCREEN | LOGIN_SCREEN));
    }

    is(action) { return action === this._action && action !== Meta.KeyBindingAction.NONE; }

    destroy() {
        if (!this.is(this._action)) return;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(this._action),
            Shell.ActionMode.NONE);
        global.display.ungrab_accelerator(this._action);
        this._action = Meta.KeyBindingAction.NONE;
    }
}

/// An icon in the panel that tells of presses and opens nothing itself.
class Icon {
    constructor(press) {
        this._image = new St.Icon({style_class: 'system-status-icon'});
        this.button = new PanelMenu.Button(0.5, '', true);
        this.button.add_child(this._image);
        this.button.connect('event', guarded((actor, event) => {
            const pressed = Icon._buttonOf(event);
            if (!pressed) return Clutter.EVENT_PROPAGATE;
            const [x, y] = actor.get_transformed_position();
            press(pressed, event.get_state(),
                [x, y, ...actor.get_transformed_size()].map(Math.round));
            return Clutter.EVENT_STOP;
        }));
        Main.panel.addToStatusArea(interfaceName, this.button);
    }

    static _buttonOf(event) {
        const {BUTTON_PRESS, TOUCH_BEGIN, KEY_PRESS} = Clutter.EventType;
        switch (event.type()) {
        case BUTTON_PRESS: return event.get_button();
        case TOUCH_BEGIN: return Clutter.BUTTON_PRIMARY;
        case KEY_PRESS: break;
        default: return 0;
        }
        switch (event.get_key_symbol()) {
        case Clutter.KEY_Menu: return Clutter.BUTTON_SECONDARY;
        case Clutter.KEY_Return: case Clutter.KEY_space: return Clutter.BUTTON_PRIMARY;
        default: return 0;
        }
    }

    show(name, picture, description) {
        this._image.gicon = name ? new Gio.ThemedIcon({name}) : Gio.BytesIcon.new(picture);
        this.button.accessible_name = description;
    }

    destroy() { this.button.destroy(); }
}

/// All that there is for the program that has attached, until it detaches or leaves the bus.
class Guest {
    constructor(name, pid, gone) {
        this.name = name;
        this._covers = new Covers();
        this._front = new Front(pid, () => this._tell('Dismissed'));
        this._key = new Key();
        this._icon = null;
        const hear = (object, ...signals) => object.connectObject(
            ...signals.map(each => typeof each === 'string' ? each : guarded(each)), this);
        this._heard = [global.stage, global.display, Main.layoutManager, Main.overview,
            Main.sessionMode];
        hear(global.stage, 'before-paint', () => this._raise());
        hear(global.display,
            'window-created', (_display, window) => this._front.admit(window),
            'accelerator-activated', (_display, action) => {
                if (this._key.is(action) && !Main.sessionMode.isLocked) this._tell('KeyPressed');
            });
        hear(Main.layoutManager, 'monitors-changed', () => this._covers.layOut());
        hear(Main.overview, 'showing', () => this._tell('Dismissed'));
        hear(Main.sessionMode, 'updated', () => this._followLock());
        this._watch = Gio.bus_watch_name_on_connection(Gio.DBus.session, name,
            Gio.BusNameWatcherFlags.NONE, null, guarded(gone));
        this._followLock();
    }

    Cover(...look) { this._covers.show(look); }
    Uncover() { this._covers.show(null); }
    Lift(...window) { this._front.lift(...window); }
    Drop(number) { this._front.drop(number); }
    GrabKey(accelerator) { this._key.grab(accelerator); }
    ShowIcon(...look) {
        this._icon ??= new Icon((button, modifiers, place) =>
            this._tell('IconPressed', new GLib.Variant('(uu(iiii))', [button, modifiers, place])));
        this._icon.show(...look);
        this._followLock();
    }

    HideIcon() {
        this._icon?.destroy();
        this._icon = null;
    }

    /// Nothing of this kind of order lasts: the Shell and its other extensions add to the stage.
    _raise() {
        if (Main.sessionMode.isLocked) return;
        const {stage} = global;
        const [covers, front] = [this._covers.actor, this._front.actor];
        if (stage.get_last_child() === front && front.get_previous_sibling() === covers) return;
        stage.set_child_above_sibling(covers, null);
        stage.set_child_above_sibling(front, null);
    }

    /// The lock's shield slides over the covers, and off them again.
    _followLock() {
        const locked = Main.sessionMode.isLocked;
        const {uiGroup, screenShieldGroup} = Main.layoutManager;
        move(this._covers.actor, locked ? uiGroup : global.stage);
        if (locked) uiGroup.set_child_below_sibling(this._covers.actor, screenShieldGroup);
        this._front.actor.visible = !locked;
        if (this._icon) this._icon.button.visible = !locked;
        if (locked) this._tell('Dismissed');
        this._raise();
    }

    _tell(signal, values = null) {
        Gio.DBus.session.emit_signal(this.name, objectPath, interfaceName, signal, values);
    }

    leave() {
        this._tell('Gone');
        this.destroy();
    }

    destroy() {
        Gio.bus_unwatch_name(this._watch);
        for (const object of this._heard) object.disconnectObject(this);
        for (const each of [this._covers, this._front, this._key]) guarded(() => each.destroy())();
        guarded(() => this.HideIcon())();
    }
}

/// The object on the bus, by the Shell's own connection. One program at a time is let in.
class Desk {
    constructor() {
        const answers = {};
        for (const name of Object.keys(requests))
            answers[`${name}Async`] = (values, call) => this._answer(name, values, call);
        this._exported = Gio.DBusExportedObject.wrapJSObject(interfaceXml, answers);
        this._exported.export(Gio.DBus.session, objectPath);
        this._announce();
    }

    async _answer(name, values, call) {
        try {
            if (name === 'Attach') await this._attach(call.get_sender());
            else if (this._guest?.name !== call.get_sender()) throw new Error('not attached');
            else if (name === 'Detach') this._letGo();
            else this._guest[name](...values);
            call.return_value(null);
        } catch (error) {
            call.return_dbus_error(`${interfaceName}.Refused`, String(error));
        }
    }

    async _attach(name) {
        const bus = 'org.freedesktop.DBus';
        const reply = await Gio.DBus.session.call(bus, '/org/freedesktop/DBus', bus,
            'GetConnectionUnixProcessID', new GLib.Variant('(s)', [name]), null,
            Gio.DBusCallFlags.NONE, -1, null);
        const [pid] = reply.deepUnpack();
        if (this._guest || !this._exported) throw new Error('not free');
        this._guest = new Guest(name, pid, () => this._letGo());
    }

    _letGo() {
        this._guest?.destroy();
        this._guest = null;
        this._announce();
    }

    /// Whoever waits for it may attach now.
    _announce() {
        Gio.DBus.session.emit_signal(null, objectPath, interfaceName, 'Free', null);
    }

    destroy() {
        this._guest?.leave();
        this._guest = null;
        this._exported.unexport();
        this._exported = null;
    }
}
