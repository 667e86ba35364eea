// Loads the extension for Shells that load modules, in whose place modules of this folder stand, and
// takes it through what a program asks for. Fails where a call is missing that those Shells have.
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import System from 'system';
import {calls, object} from './stub.js';

const [built, folder] = System.programArgs;
const read = name => new TextDecoder().decode(Gio.File.new_for_path(name).load_contents(null)[1]);
const text = read(`${built}/extension.js`).replace(/from '[^']*'/g, `from 'file://${folder}/stub.js'`);
const [file] = Gio.File.new_tmp('extension-XXXXXX.js');
file.replace_contents(text, null, false, Gio.FileCreateFlags.NONE, null);
const {default: Extension} = await import(file.get_uri());
file.delete(null);

globalThis.global = object('global');
globalThis.logError = error => { throw error; };
const extension = new Extension({});
const ask = async (name, ...values) => {
    let failure = null;
    await calls.exported[`${name}Async`](values, {
        get_sender: () => ':1.1', return_value() {}, return_dbus_error(_name, text) { failure = text; },
    });
    if (failure) throw new Error(`${name}: ${failure}`);
};
extension.enable();
await ask('Attach');
await ask('Cover', 84, [0, 0, 0, 0.4]);
await ask('Lift', 7, 1001, true);
await ask('GrabKey', '<Super>0x39');
await ask('ShowIcon', '', new Uint8Array(), 'eye');
await ask('Uncover');
await ask('Detach');
extension.disable();
for (const name of ['disable_unredirect', 'enable_unredirect', 'add_debug_flags',
    'remove_debug_flags', 'radius', 'BytesIcon.new', 'grab_accelerator', 'unexport'])
    if (!calls.made.some(call => call.endsWith(name))) throw new Error(`${name} was not called`);
