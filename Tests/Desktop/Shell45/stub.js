// What stands in for all that the extension imports: objects that take any call and note it.
import GLib from 'gi://GLib';

export const calls = {made: [], exported: null};

const gone = [ // What Shells of 48 do not have any more.
    'disable_unredirect_for_display', 'add_clutter_debug_flags', 'sigma', 'add_actor'];

export function object(name) {
    const values = {};
    return new Proxy(function () {}, {
        get(_target, key) {
            if (key === Symbol.toPrimitive) return () => 1;
            if (key === Symbol.iterator) return [][Symbol.iterator].bind([1, 1]);
            if (typeof key === 'symbol' || key === 'then') return undefined;
            const path = `${name}.${key}`;
            if (gone.some(each => path.endsWith(each))) throw new Error(`there is no ${path}`);
            return values[key] ?? known[path.split('.').slice(-2).join('.')] ?? object(path);
        },
        set(_target, key, value) {
            calls.made.push(`${name}.${key}`);
            values[key] = value;
            return true;
        },
        has: (_target, key) => key !== 'sigma',
        apply(_target, _this, values) {
            calls.made.push(name);
            if (name.endsWith('wrapJSObject')) calls.exported = values[1];
            return object(`${name}()`);
        },
        construct: () => object(`${name}`),
        getPrototypeOf: () => Object.prototype,
    });
}

const known = {
    'layoutManager.monitors': [{x: 0, y: 0, width: 100, height: 100}],
    'global.get_window_actors': () => [],
    'sessionMode.isLocked': false,
    'KeyBindingAction.NONE': 0,
    'Shell.Variant': GLib.Variant,
};

export default object('Shell');
export const [layoutManager, panel, overview, wm, sessionMode, Button] =
    ['layoutManager', 'panel', 'overview', 'wm', 'sessionMode', 'Button'].map(object);
export class Extension {}
