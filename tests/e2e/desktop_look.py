"""The windows follow the desktop's settings portal, from light to dark and back, while they are open."""

import sys

from gi.repository import Gio, GLib

from desktop import Desktop

INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
<method name="ReadOne"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""
PATH, GROUP, LIGHT, DARK = "/org/freedesktop/portal/desktop", "org.freedesktop.appearance", 2, 1


class Portal:
    """Stands in for the desktop's, on a bus of the test's own."""

    def __init__(self, scheme):
        self.scheme = scheme
        self.context = GLib.MainContext.default()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object(PATH, interface, self.answer, None, None)
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                           GLib.Variant("(su)", ("org.freedesktop.portal.Desktop", 0)), None, 0, -1, None)

    def answer(self, _bus, _sender, _path, _interface, _method, arguments, call):
        if arguments.unpack() == (GROUP, "color-scheme"):
            call.return_value(GLib.Variant("(v)", (GLib.Variant("u", self.scheme),)))
        else:
            call.return_dbus_error("org.freedesktop.portal.Error.NotFound", "not found")

    def work(self):
        while self.context.iteration(False):
            pass

    def switch(self, scheme):
        self.scheme = scheme
        value = GLib.Variant("(ssv)", (GROUP, "color-scheme", GLib.Variant("u", scheme)))
        self.bus.emit_signal(None, PATH, "org.freedesktop.portal.Settings", "SettingChanged", value)
        self.bus.flush_sync(None)


def brightness(desktop, window):
    """Of the whole window, from 0 to 1: its ground has by far the most of it."""
    return float(desktop.run("convert", f"x:{window}", "-colorspace", "Gray", "-format", "%[fx:mean]", "info:").stdout)


def main(program):
    portal = Portal(DARK)
    with Desktop(program) as desktop:
        # Answered while the window is waited for.
        wait_for = desktop.wait_for
        desktop.wait_for = lambda condition, *more: wait_for(lambda: (portal.work(), condition())[1], *more)
        window = desktop.start()
        desktop.wait_for(lambda: brightness(desktop, window) < 0.4, "a dark window at the start")
        for scheme in (LIGHT, DARK, LIGHT):
            portal.switch(scheme)
            desktop.wait_for(lambda: (brightness(desktop, window) < 0.4) == (scheme == DARK), f"scheme {scheme}")
        desktop.leave()

        window = desktop.start(environment={"VANTOR_COLOR_SCHEME": "dark"})
        desktop.wait_for(lambda: brightness(desktop, window) < 0.4, "what the environment says")
        desktop.leave()
    print("1 passed, 0 failed")


if __name__ == "__main__":
    main(*sys.argv[1:])
