// Entry of the companion for GNOME Shell 43 and 44 (imports.*, init/enable/disable); the
// build puts companion.js after these lines.
/* exported init */
const {Clutter, Gio, GLib, Meta, Shell, St} = imports.gi;
const Main = imports.ui.main;
const PanelMenu = imports.ui.panelMenu;
const PopupMenu = imports.ui.popupMenu;
const Config = imports.misc.config;

function init(meta) {
    const [, xml] = meta.dir.get_child('io.glimmo.Companion.xml').load_contents(null);
    return new Companion(new TextDecoder().decode(xml));
}
