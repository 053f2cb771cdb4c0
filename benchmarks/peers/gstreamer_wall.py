#!/usr/bin/python3
"""A wall of streams by GStreamer: gstreamer_wall.py WINDOW FILE,FILE... X,Y,WxH...

A pipeline and a window for each place; pictures are scaled before they are converted, which is the cheaper order. Says
"open" when all run, answers each line of the standard input with "counts DUE DROPPED PAINTED", ends with its end.
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


def sinks(windows, files, places):
    result = []
    for index, place in enumerate(places):
        pipeline = Gst.parse_launch(
            f'filesrc location="{files[index % len(files)]}" ! qtdemux ! h264parse ! avdec_h264 max-threads=1'
            f" ! videoscale n-threads=1 ! video/x-raw,width={place[2]},height={place[3]}"
            " ! videoconvert n-threads=1 ! ximagesink name=sink force-aspect-ratio=false")
        sink = pipeline.get_by_name("sink")
        sink.handle_events(False)
        sink.set_window_handle(windows.make(windows.outer, *place))
        result.append((pipeline, sink))
    return result


def counts(wall):
    rendered = dropped = 0
    for _, sink in wall:
        stats = sink.get_property("stats")
        rendered += stats.get_value("rendered")
        dropped += stats.get_value("dropped")
    return rendered, dropped


def main():
    Gst.init(None)
    windows = Windows(*numbers(sys.argv[1]))
    wall = sinks(windows, sys.argv[2].split(","), [numbers(place) for place in sys.argv[3:]])
    for pipeline, _ in wall:
        pipeline.set_state(Gst.State.PLAYING)
        time.sleep(0.007)  # so that their clocks differ
    while any(sink.get_property("stats").get_value("rendered") == 0 for _, sink in wall):
        time.sleep(0.01)
    print("open", flush=True)
    for _ in sys.stdin:
        rendered, dropped = counts(wall)
        print("counts", rendered + dropped, dropped, rendered, flush=True)
    for pipeline, _ in wall:
        pipeline.set_state(Gst.State.NULL)


main()
