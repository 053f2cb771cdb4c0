#!/usr/bin/python3
"""A wall of streams by GStreamer: gstreamer_wall.py sinks|compositor WINDOW FILE,FILE... X,Y,WxH...

One stream a place. "sinks": a pipeline and a window each, scaled before it is converted; "compositor": one pipeline
that puts all into one picture. Says "open" when all run, answers each line of the standard input with "counts DUE
DROPPED PAINTED", ends with its end.
"""

import ctypes
import sys
import time

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstVideo", "1.0")
from gi.repository import Gst, GstVideo  # noqa: E402,F401 (GstVideo gives sinks their windows)


def numbers(text):
    return list(map(int, text.replace("x", ",").split(",")))


class Windows:
    """Plain X windows."""

    def __init__(self, width, height):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XCreateSimpleWindow.restype = ctypes.c_ulong
        self.x.XCreateSimpleWindow.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + [ctypes.c_int] * 2 + [
            ctypes.c_uint] * 3 + [ctypes.c_ulong] * 2
        self.x.XMapWindow.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self.x.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
        self.display = self.x.XOpenDisplay(None)
        self.outer = self.make(self.x.XDefaultRootWindow(self.display), 0, 0, width, height)

    def make(self, parent, x, y, width, height):
        window = self.x.XCreateSimpleWindow(self.display, parent, x, y, width, height, 0, 0, 0)
        self.x.XMapWindow(self.display, window)
        self.x.XSync(self.display, 0)
        return window


DECODE = 'filesrc location="{}" ! qtdemux ! h264parse ! avdec_h264 max-threads=1'


def sinks(windows, files, places):
    result = []
    for index, place in enumerate(places):
        pipeline = Gst.parse_launch(
            DECODE.format(files[index % len(files)]) +
            f" ! videoscale n-threads=1 ! video/x-raw,width={place[2]},height={place[3]}"
            " ! videoconvert n-threads=1 ! ximagesink name=sink force-aspect-ratio=false")
        sink = pipeline.get_by_name("sink")
        sink.handle_events(False)
        sink.set_window_handle(windows.make(windows.outer, *place))
        result.append((pipeline, sink, 1))
    return result


def compositor(windows, files, places, size):
    branches = " ".join(
        DECODE.format(files[index % len(files)]) + f" ! queue max-size-buffers=3 ! mix.sink_{index}"
        for index in range(len(places)))
    pads = " ".join(
        f"sink_{index}::xpos={x} sink_{index}::ypos={y} sink_{index}::width={w} sink_{index}::height={h}"
        for index, (x, y, w, h) in enumerate(places))
    pipeline = Gst.parse_launch(
        f"compositor name=mix background=black {pads} ! video/x-raw,width={size[0]},height={size[1]}"
        f" ! queue max-size-buffers=2 ! videoconvert n-threads=1 ! ximagesink name=sink {branches}")
    sink = pipeline.get_by_name("sink")
    sink.handle_events(False)
    sink.set_window_handle(windows.outer)
    return [(pipeline, sink, len(places))]


def counts(wall):
    rendered = dropped = 0
    for _, sink, pictures in wall:
        stats = sink.get_property("stats")
        rendered += stats.get_value("rendered") * pictures
        dropped += stats.get_value("dropped") * pictures
    return rendered, dropped


def main():
    Gst.init(None)
    kind, size, files, places = sys.argv[1], numbers(sys.argv[2]), sys.argv[3].split(","), sys.argv[4:]
    places = [numbers(place) for place in places]
    windows = Windows(*size)
    wall = sinks(windows, files, places) if kind == "sinks" else compositor(windows, files, places, size)
    for pipeline, _, _ in wall:
        pipeline.set_state(Gst.State.PLAYING)
        time.sleep(0.007)  # so that their clocks differ
    while any(sink.get_property("stats").get_value("rendered") == 0 for _, sink, _ in wall):
        time.sleep(0.01)
    print("open", flush=True)
    for _ in sys.stdin:
        rendered, dropped = counts(wall)
        print("counts", rendered + dropped, dropped, rendered, flush=True)
    for pipeline, _, _ in wall:
        pipeline.set_state(Gst.State.NULL)


main()
