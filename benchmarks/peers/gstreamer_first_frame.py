#!/usr/bin/python3
"""GStreamer opens a file by the order "open FILE" and answers "shown MS": from the order to the first frame shown."""

import sys
import time

import gi

gi.require_version("Gst", "1.0")
from gi.repository import Gst  # noqa: E402


def first_frame(file):
    start = time.monotonic()
    pipeline = Gst.parse_launch(
        f'filesrc location="{file}" ! qtdemux ! h264parse ! avdec_h264 max-threads=1 ! videoscale n-threads=1'
        " ! videoconvert n-threads=1 ! ximagesink")
    pipeline.set_state(Gst.State.PLAYING)
    # A sink shows the first frame before it says that it is ready to play.
    message = pipeline.get_bus().timed_pop_filtered(10 * Gst.SECOND, Gst.MessageType.ASYNC_DONE | Gst.MessageType.ERROR)
    milliseconds = 1000 * (time.monotonic() - start)
    pipeline.set_state(Gst.State.NULL)
    if message is None or message.type == Gst.MessageType.ERROR:
        return "failed to show the file"
    return f"shown {milliseconds:.2f}"


Gst.init(None)
for line in sys.stdin:
    print(first_frame(line.split(maxsplit=1)[1].strip()), flush=True)
