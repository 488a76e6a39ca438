// Entry of the companion for GNOME Shell 45 and later (ES modules, an Extension subclass); the
// build puts companion.js after these lines.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import St from 'gi://St';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import * as PanelMenu from 'resource:///org/gnome/shell/ui/panelMenu.js';
import * as PopupMenu from 'resource:///org/gnome/shell/ui/popupMenu.js';
import * as Config from 'resource:///org/gnome/shell/misc/config.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

export default class GlimmoCompanion extends Extension {
    enable() {
        const [, xml] = this.dir.get_child('io.glimmo.Companion.xml').load_contents(null);
        this._companion = new Companion(new TextDecoder().decode(xml));
        this._companion.enable();
    }

    disable() {
        this._companion.disable();
        this._companion = null;
    }
}
