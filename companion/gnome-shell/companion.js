// Glimmo's companion inside GNOME Shell: what a Wayland client cannot do for itself, offered to
// Glimmo alone over the session bus (../io.glimmo.Companion.xml): where the focused window is,
// the four keys of the suggestion bubble, and Glimmo's menu in the top bar.
//
// The logic of both extension formats. companion/CMakeLists.txt joins this file to a head,
// extension-43.js (imports.*) or extension-45.js (ES modules), which brings the names used
// here: Gio, GLib, Meta, Shell, St, Clutter, Main, PanelMenu, PopupMenu and Config.

const GLIMMO = 'io.glimmo.Glimmo';
const OBJECT_PATH = '/io/glimmo/Companion';
const INTERFACE = 'io.glimmo.Companion';
const KEYS = ['Tab', 'Escape', 'Up', 'Down'];
// Between two key events the companion sends: see _press.
const KEY_GAP_MS = 25;
// How long presses of a key being passed go to the window: see _passKey.
const PASS_WINDOW_US = 500 * 1000;

class Companion {
    // interfaceXml: the text of io.glimmo.Companion.xml.
    constructor(interfaceXml) {
        this._interfaceXml = interfaceXml;
    }

    enable() {
        this._glimmo = null; // unique name of io.glimmo.Glimmo's owner
        this._grabs = new Map(); // accelerator action -> key name
        this._passing = new Map(); // binding name -> until when (µs) its presses go to the window
        this._menu = null;
        this._queue = []; // [keyval, state] still to send
        this._pacing = 0; // the timeout sending the next, while any are queued

        this._dbus = Gio.DBusExportedObject.wrapJSObject(this._interfaceXml, this._methods());
        this._dbus.export(Gio.DBus.session, OBJECT_PATH);
        this._ownId = Gio.bus_own_name(Gio.BusType.SESSION, INTERFACE,
            Gio.BusNameOwnerFlags.NONE, null, null, null);
        this._watchId = Gio.bus_watch_name(Gio.BusType.SESSION, GLIMMO,
            Gio.BusNameWatcherFlags.NONE,
            (connection, name, owner) => this._setGlimmo(owner),
            () => this._setGlimmo(null));

        this._activatedId = global.display.connect('accelerator-activated',
            (display, action) => {
                const key = this._grabs.get(action);
                if (key)
                    this._emit('KeyPressed', new GLib.Variant('(s)', [key]));
            });
        // The shell asks before running a binding; saying "filter it out" hands the press to
        // the focused window. Connected after the shell's own handler, so only a binding the
        // shell allows reaches this one.
        this._filterId = global.window_manager.connect('filter-keybinding',
            (wm, binding) => this._letThrough(binding.get_name()));
    }

    disable() {
        this._setGlimmo(null);
        global.display.disconnect(this._activatedId);
        global.window_manager.disconnect(this._filterId);
        Gio.bus_unwatch_name(this._watchId);
        Gio.bus_unown_name(this._ownId);
        this._dbus.unexport();
        this._dbus = null;
        if (this._pacing)
            GLib.source_remove(this._pacing);
        this._pacing = 0;
        this._queue = [];
        this._keyboard = null;
    }

    _setGlimmo(owner) {
        if (owner === this._glimmo)
            return;
        // A new owner starts from nothing, as one that left.
        this._wantKeys(false);
        this._hideMenu();
        this._glimmo = owner;
    }

    // The D-Bus methods. Each gets the invocation, to answer Glimmo alone.
    _methods() {
        const methods = {
            Hello: () => new GLib.Variant('(uss)', [1, 'GNOME Shell', Config.PACKAGE_VERSION]),
            FocusedWindow: () => new GLib.Variant('(a{sv})', [this._focusedWindow()]),
            WantKeys: wanted => this._wantKeys(wanted),
            PassKey: key => this._passKey(key),
            PressShortcut: shortcut => this._pressShortcut(shortcut),
            SetMenu: (icon, rows) => this._setMenu(icon, rows),
            HideMenu: () => this._hideMenu(),
        };
        const wrapped = {};
        for (const [name, method] of Object.entries(methods)) {
            wrapped[`${name}Async`] = (params, invocation) => {
                if (!this._glimmo || invocation.get_sender() !== this._glimmo) {
                    invocation.return_dbus_error('org.freedesktop.DBus.Error.AccessDenied',
                        `Only the owner of ${GLIMMO} may call the companion`);
                    return;
                }
                try {
                    invocation.return_value(method(...params) ?? null);
                } catch (e) {
                    invocation.return_dbus_error('org.freedesktop.DBus.Error.InvalidArgs',
                        e.message);
                }
            };
        }
        return wrapped;
    }

    _emit(signal, params = null) {
        if (this._glimmo) {
            Gio.DBus.session.emit_signal(this._glimmo, OBJECT_PATH, INTERFACE, signal,
                params);
        }
    }

    _focusedWindow() {
        const window = global.display.focus_window;
        if (!window)
            return {};
        const frame = window.get_frame_rect();
        const buffer = window.get_buffer_rect();
        const monitor = window.get_monitor();
        const int = value => new GLib.Variant('i', value);
        return {
            pid: new GLib.Variant('u', Math.max(0, window.get_pid())),
            wayland: new GLib.Variant('b',
                window.get_client_type() === Meta.WindowClientType.WAYLAND),
            x: int(frame.x), y: int(frame.y), width: int(frame.width), height: int(frame.height),
            bufferX: int(buffer.x), bufferY: int(buffer.y),
            bufferWidth: int(buffer.width), bufferHeight: int(buffer.height),
            scale: new GLib.Variant('d',
                monitor >= 0 ? global.display.get_monitor_scale(monitor) : 1),
        };
    }

    _wantKeys(wanted) {
        if (wanted && this._grabs.size === 0) {
            for (const key of KEYS) {
                const action = global.display.grab_accelerator(key, Meta.KeyBindingFlags.NONE);
                if (action === Meta.KeyBindingAction.NONE) {
                    console.warn(`Glimmo companion: cannot take ${key}`);
                    continue;
                }
                // Windows only: never over the lock screen, the overview or a shell menu.
                Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action),
                    Shell.ActionMode.NORMAL);
                this._grabs.set(action, key);
            }
        } else if (!wanted) {
            for (const action of this._grabs.keys()) {
                global.display.ungrab_accelerator(action);
                Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action),
                    Shell.ActionMode.NONE);
            }
            this._grabs.clear();
            this._passing.clear();
        }
    }

    // Presses and releases the key as a keyboard would, for the focused window. The grab stays:
    // the virtual keyboard's events reach the key bindings only after this returns (through
    // the input thread and the next frame), so giving the grab up here and taking it again
    // would catch the very press meant for the window. The binding of a key being passed is
    // filtered out instead for a moment, not once: with an input method in the shell (IBus),
    // GNOME Shell 43 asks about the same press before and after the input method has seen it.
    _passKey(key) {
        if (!KEYS.includes(key))
            throw new Error(`Not a key the companion takes: ${key}`);
        for (const [action, name] of this._grabs) {
            if (name === key) {
                const binding = Meta.external_binding_name_for_action(action);
                this._passing.set(binding, GLib.get_monotonic_time() + PASS_WINDOW_US);
            }
        }
        this._press([Clutter[`KEY_${key}`]]);
    }

    _pressShortcut(shortcut) {
        const letter = {'ctrl+v': Clutter.KEY_v, 'ctrl+a': Clutter.KEY_a}[shortcut];
        if (!letter)
            throw new Error(`Not a shortcut the companion presses: ${shortcut}`);
        this._press([Clutter.KEY_Control_L, letter]);
    }

    // Presses the keys in order and releases them in reverse, on a keyboard of the
    // companion's own, one event at a time a little apart. With an input method in the shell
    // (GNOME starts IBus) every key goes to it and comes back to the window later, with the
    // modifiers the keyboard holds by then: sent all at once, Ctrl+V reached the window as "v".
    _press(keyvals) {
        if (!this._keyboard) {
            const backend = global.stage.context?.get_backend?.() ??
                Clutter.get_default_backend();
            this._keyboard = backend.get_default_seat().create_virtual_device(
                Clutter.InputDeviceType.KEYBOARD_DEVICE);
        }
        for (const keyval of keyvals)
            this._queue.push([keyval, Clutter.KeyState.PRESSED]);
        for (const keyval of [...keyvals].reverse())
            this._queue.push([keyval, Clutter.KeyState.RELEASED]);
        if (!this._pacing)
            this._sendNext();
    }

    _sendNext() {
        const next = this._queue.shift();
        if (!next) {
            this._pacing = 0;
            return GLib.SOURCE_REMOVE;
        }
        this._keyboard.notify_keyval(GLib.get_monotonic_time(), ...next);
        this._pacing = GLib.timeout_add(GLib.PRIORITY_DEFAULT, KEY_GAP_MS,
            () => this._sendNext());
        return GLib.SOURCE_REMOVE;
    }

    _letThrough(binding) {
        const until = this._passing.get(binding);
        if (until === undefined)
            return false;
        if (GLib.get_monotonic_time() <= until)
            return true;
        this._passing.delete(binding);
        return false;
    }

    // rows: [{title, separator, checkable, checked, enabled}], see the interface.
    _setMenu(icon, rowsJson) {
        const rows = JSON.parse(rowsJson);
        if (!Array.isArray(rows))
            throw new Error('rows is not a JSON array');
        if (!this._menu) {
            this._menu = new PanelMenu.Button(0.5, 'Glimmo', false);
            this._icon = new St.Icon({style_class: 'system-status-icon'});
            this._menu.add_child(this._icon);
            this._menu.menu.connect('open-state-changed', (menu, open) => {
                if (open)
                    this._emit('MenuOpening');
            });
            Main.panel.addToStatusArea('glimmo', this._menu);
            this._items = [];
        }
        if (this._iconPath !== icon) {
            this._icon.gicon = new Gio.FileIcon({file: Gio.File.new_for_path(icon)});
            this._iconPath = icon;
        }

        // While the menu is open the rows change where they are; a row turning into a
        // separator or back needs a new item.
        rows.forEach((row, index) => {
            let item = this._items[index];
            const separator = item instanceof PopupMenu.PopupSeparatorMenuItem;
            if (!item || separator !== Boolean(row.separator)) {
                item?.destroy();
                item = row.separator
                    ? new PopupMenu.PopupSeparatorMenuItem()
                    : this._newItem(index);
                this._menu.menu.addMenuItem(item, index);
                this._items[index] = item;
            }
            if (row.separator)
                return;
            item.label.text = String(row.title ?? '');
            item.setOrnament(row.checkable && row.checked
                ? PopupMenu.Ornament.CHECK : PopupMenu.Ornament.NONE);
            item.setSensitive(row.enabled ?? true);
        });
        this._items.splice(rows.length).forEach(item => item.destroy());
    }

    _newItem(index) {
        const item = new PopupMenu.PopupMenuItem('');
        item.connect('activate',
            () => this._emit('MenuActivated', new GLib.Variant('(i)', [index])));
        return item;
    }

    _hideMenu() {
        this._menu?.destroy();
        this._menu = null;
        this._icon = null;
        this._iconPath = null;
        this._items = [];
    }
}
