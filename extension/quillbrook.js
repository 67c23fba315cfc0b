
const NAME = 'cn.tarnlow.quillbrook';
const PATH = '/cn/tarnlow/quillbrook/Panel';
const INTERFACE = 'cn.tarnlow.quillbrook.Panel';
const MOST_CHARACTERS = 200;
const SOON_MS = 100;

/** The beginning of a text that a program gave itself; empty when it has none that is text. */
function beginning(read) {
    try {
        return [...(read() ?? '')].slice(0, MOST_CHARACTERS).join('');
    } catch {
        return ''; // its bytes are no UTF-8
    }
}

/**
 * Whose window has the keys: the application's id, the window's class and its process. Nothing else
 * of any window is asked.
 */
function frontApplication() {
    const window = global.display.focus_window;
    if (!window || window.get_window_type() === Meta.WindowType.DESKTOP)
        return ['', '', 0];
    const app = Shell.WindowTracker.get_default().get_window_app(window);
    const id = app && !app.is_window_backed() ? beginning(() => app.get_id()) : '';
    return [
        id.replace(/\.desktop$/, ''),
        beginning(() => window.get_wm_class()),
        Math.max(window.get_pid(), 0),
    ];
}

/** The text in the panel with its menu. */
const Item = GObject.registerClass(
class QuillbrookItem extends PanelMenu.Button {
    _init(program) {
        super._init(0.5, 'Quillbrook');
        this._program = program;
        this._icon = new St.Icon({
            icon_name: 'dialog-warning-symbolic',
            style_class: 'system-status-icon quillbrook-alert',
        });
        this._label = new St.Label({
            style_class: 'quillbrook-label',
            y_align: Clutter.ActorAlign.CENTER,
        });
        const box = new St.BoxLayout({style_class: 'panel-status-indicators-box'});
        box.add_child(this._icon);
        box.add_child(this._label);
        this.add_child(box);
        this.label_actor = this._label;
        this.menu.connect('open-state-changed', (_menu, isOpen) => {
            if (isOpen)
                this._program.tell('MenuOpens');
        });
    }

    showContent(label, isAlert, ids, titles) {
        this.visible = label !== '';
        this._icon.visible = isAlert;
        this._label.text = label;
        if (isAlert)
            this._label.add_style_class_name('quillbrook-alert');
        else
            this._label.remove_style_class_name('quillbrook-alert');
        const entries = JSON.stringify([ids, titles]);
        if (entries === this._entries)
            return; // it may be open
        this._entries = entries;
        this.menu.removeAll();
        titles.forEach((title, at) => this.menu.addMenuItem(
            title === '' ? new PopupMenu.PopupSeparatorMenuItem() : this._entry(ids[at], title)));
    }

    _entry(id, title) {
        const entry = new PopupMenu.PopupMenuItem(title);
        entry.connect('activate', () => this._program.choose(id));
        return entry;
    }
});

/**
 * The program while it is there: whoever owns its name on the session bus, and nobody else. Calls are
 * not answered. It lets us know what to show when we greet it, when it is ready to hear, and at each
 * change; from the first time on it is told who is in front.
 */
class Program {
    constructor(owner) {
        this._owner = owner;
        this._told = null;
        this._item = null;
        this._changes = Gio.DBus.session.signal_subscribe(
            owner, INTERFACE, 'Changed', PATH, null, Gio.DBusSignalFlags.NONE,
            (_bus, _sender, _path, _interface, _signal, content) => this._hear(content));
        this._soon = 0;
        this._focus = global.display.connect('notify::focus-window', () => this._tellSoon());
        this._tracker = Shell.WindowTracker.get_default();
        this._tracked = this._tracker.connect(
            'tracked-windows-changed', () => this._tellSoon());
        this.tell('Hello');
    }

    tell(method, parameters = null) {
        Gio.DBus.session.call(
            this._owner, PATH, INTERFACE, method, parameters, null,
            Gio.DBusCallFlags.NO_AUTO_START, -1, null, null);
    }

    /** An entry of the menu was chosen. With the token the program may bring a window of its own. */
    choose(id) {
        const context = global.create_app_launch_context(global.get_current_time(), -1);
        const app = Gio.AppInfo.create_from_commandline(
            'quillbrook', 'Quillbrook', Gio.AppInfoCreateFlags.SUPPORTS_STARTUP_NOTIFICATION);
        const token = context.get_startup_notify_id(app, []);
        this.tell('Choose', new GLib.Variant('(us)', [id, token ?? '']));
    }

    _hear(content) {
        if (content.get_type_string() !== '(sbauas)')
            return;
        if (!this._item) {
            this._item = new Item(this);
            Main.panel.addToStatusArea(NAME, this._item);
        }
        this._item.showContent(...content.deepUnpack());
        this._tellFront();
    }

    /** Of many windows that come to the front at once the last is told. */
    _tellSoon() {
        this._soon ||= GLib.timeout_add(GLib.PRIORITY_DEFAULT, SOON_MS, () => {
            this._soon = 0;
            this._tellFront();
            return GLib.SOURCE_REMOVE;
        });
    }

    _tellFront() {
        if (!this._item)
            return;
        const front = frontApplication();
        if (this._told?.every((part, at) => part === front[at]))
            return;
        this._told = front;
        this.tell('Front', new GLib.Variant('(ssu)', front));
    }

    leave() {
        Gio.DBus.session.signal_unsubscribe(this._changes);
        global.display.disconnect(this._focus);
        this._tracker.disconnect(this._tracked);
        if (this._soon)
            GLib.source_remove(this._soon);
        this._item?.destroy();
        this._item = null;
        this.tell('Bye');
    }
}

class Quillbrook extends Extension {
    enable() {
        this._program = null;
        this._watch = Gio.bus_watch_name(
            Gio.BusType.SESSION, NAME, Gio.BusNameWatcherFlags.NONE,
            (_bus, _name, owner) => {
                this._leave();
                this._program = new Program(owner);
            },
            () => this._leave());
    }

    disable() {
        Gio.bus_unwatch_name(this._watch);
        this._leave();
    }

    _leave() {
        this._program?.leave();
        this._program = null;
    }
}

