/* exported init */
const {Clutter, Gio, GLib, GObject, Meta, Shell, St} = imports.gi;
const Main = imports.ui.main;
const PanelMenu = imports.ui.panelMenu;
const PopupMenu = imports.ui.popupMenu;

/** What every extension is derived from in later versions. */
class Extension {}
