// Glimmo's companion inside KWin (Plasma's Wayland session): tells Glimmo, and only Glimmo,
// where the active window is, which a Wayland client cannot learn for itself. Glimmo loads this
// script over D-Bus when it starts (org.kde.kwin.Scripting.loadScript) and unloads it when it
// quits; the four keys of the suggestion bubble Glimmo takes itself, as KDE global shortcuts.
//
// A plain KWin script for KWin 5.27 and 6: each change of the active window or of its place is
// sent to io.glimmo.Glimmo's ActiveWindow method as one JSON string (callDBus turns numbers
// into "i" or "d" by their value, which no fixed signature takes). Rectangles are in KWin's
// global logical pixels:
//   {"pid", "wayland", "frame": {x, y, width, height}, "client": {…}, "buffer": {…},
//    "desktop": {width, height}}
// and {} when no window is active. The desktop's size in the same pixels lets Glimmo, an X11
// program, tell how KWin scales X11 programs.

const GLIMMO = 'io.glimmo.Glimmo';
const SHORTCUTS = ['tab', 'escape', 'up', 'down'];
// How often the script looks whether Glimmo is still there, see watch().
const WATCH_MS = 1000;

const six = workspace.activeWindow !== undefined;
let tracked = null;

function rect(r) {
    return r ? {x: r.x, y: r.y, width: r.width, height: r.height} : null;
}

function send() {
    const w = tracked;
    const window = !w ? {} : {
        pid: w.pid,
        // Only Xwayland windows have an X window id.
        wayland: !(w.windowId > 0),
        frame: rect(w.frameGeometry),
        // The window inside KWin's title bar, without the toolkit's shadows. KWin 5.27 has no
        // clientGeometry: a window KWin decorates has no shadows of its own, so its buffer is
        // that; one that decorates itself has no title bar of KWin's, so its frame is.
        client: rect(w.clientGeometry || (w.noBorder ? w.frameGeometry : w.bufferGeometry)),
        buffer: rect(w.bufferGeometry),
        desktop: {width: workspace.virtualScreenSize.width,
            height: workspace.virtualScreenSize.height},
    };
    callDBus(GLIMMO, '/io/glimmo/KWin', 'io.glimmo.KWin', 'ActiveWindow',
        JSON.stringify(window));
}

function track(window) {
    if (tracked) {
        tracked.frameGeometryChanged.disconnect(send);
        if (tracked.outputChanged)
            tracked.outputChanged.disconnect(send);
    }
    tracked = window || null;
    if (tracked) {
        tracked.frameGeometryChanged.connect(send);
        if (tracked.outputChanged)
            tracked.outputChanged.connect(send);
    }
    send();
}

// Glimmo gone without unloading this script (killed, crashed): its shortcuts would keep Tab,
// Esc and the arrows from every window until KWin restarts, so they are given back from here.
// Until Glimmo owns its name (it may load this script first) there is nothing to give back.
let seen = false;
function watch() {
    callDBus('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus',
        'NameHasOwner', GLIMMO, owned => {
            if (owned && !seen) {
                seen = true;
                send();
            }
            if (owned || !seen)
                return;
            for (const name of SHORTCUTS) {
                callDBus('org.kde.kglobalaccel', '/kglobalaccel', 'org.kde.KGlobalAccel',
                    'unregister', 'glimmo', `_k_session:${name}`);
            }
            timer.stop();
            callDBus('org.kde.KWin', '/Scripting', 'org.kde.kwin.Scripting', 'unloadScript',
                'glimmo');
        });
}

workspace.virtualScreenSizeChanged.connect(send);
if (six)
    workspace.windowActivated.connect(track);
else
    workspace.clientActivated.connect(track);
track(six ? workspace.activeWindow : workspace.activeClient);

const timer = new QTimer();
timer.interval = WATCH_MS;
timer.timeout.connect(watch);
timer.start();
watch();
