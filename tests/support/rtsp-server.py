#!/usr/bin/python3
"""A camera for tests: GStreamer's RTSP server with live test pictures, on loopback only.

Prints "PORT n" once it serves, and ends when its standard input is closed, so that a test that dies takes it along.

Streams: /live (H.264, SPS and PPS in the stream), /own (the same, made anew for each client), /bare (SPS and PPS in the description alone), /white (H.264,
limited range, all white), /full (the same samples, said to be of full range), /resize (changes its size every second), /h265, /mjpeg,
/audio (G.711 alone), /both (H.264 and G.711), /pcma, /pcmu, /aac, /opus (H.264 and a tone in this codec), /quiet
(its sound stops and comes back, every second), /nosetup (refuses to set up its sound), /hang (never answers
DESCRIBE), /slow (answers after a second). With --ears, as a camera that can be talked to: /hears-pcmu, /hears-pcma,
/hears-wide (A-law of 16 kHz), which write what they hear as NAME.raw (16 bits, in their rate) into that folder.
"""

import argparse
import sys
import threading
import time

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstRtsp", "1.0")
gi.require_version("GstRtspServer", "1.0")
from gi.repository import GLib, Gst, GstRtsp, GstRtspServer  # noqa: E402

SOURCE = "videotestsrc is-live=true pattern={pattern} ! video/x-raw,format=I420,width={size},framerate=25/1{colour}"
X264 = "x264enc tune=zerolatency speed-preset=ultrafast key-int-max=25 bframes=0 threads=1 sliced-threads=false"
BARS = SOURCE.format(pattern="smpte", size="320,height=240", colour="")
LIVE = f"{BARS} ! {X264} ! rtph264pay name=pay0 config-interval=-1"
TONE = "audiotestsrc is-live=true freq={freq} volume=0.5 ! audio/x-raw,rate={rate},channels={channels}"
ALAW = TONE.format(freq=700, rate=8000, channels=1) + "{} ! alawenc ! rtppcmapay name=pay1 pt=8"
AUDIO = "audiotestsrc is-live=true ! alawenc ! rtppcmapay name=pay{} pt=8"


def white(colour):
    source = SOURCE.format(pattern="white", size="320,height=240", colour=",colorimetry=" + colour)
    return f"{source} ! {X264} ! rtph264pay name=pay0 config-interval=-1"


STREAMS = {
    "/live": LIVE,
    "/own": LIVE,
    "/bare": f"{BARS} ! {X264} ! video/x-h264,stream-format=avc ! rtph264pay name=pay0 config-interval=0",
    "/white": white("bt601"),
    "/full": white("1:4:0:0"),
    "/resize": "videotestsrc is-live=true ! videoscale ! capsfilter name=size caps=video/x-raw,format=I420,width=320,"
    f"height=240,framerate=25/1 ! {X264} ! rtph264pay name=pay0 config-interval=-1",
    "/h265": f"{BARS} ! x265enc tune=zerolatency speed-preset=ultrafast key-int-max=25 ! rtph265pay name=pay0",
    "/mjpeg": f"{BARS} ! jpegenc ! rtpjpegpay name=pay0",
    "/audio": AUDIO.format(0),
    "/both": f"{LIVE} {AUDIO.format(1)}",
    "/pcma": f"{LIVE} {ALAW.format('')}",
    "/pcmu": f"{LIVE} {TONE.format(freq=1100, rate=8000, channels=1)} ! mulawenc ! rtppcmupay name=pay1 pt=0",
    "/aac": f"{LIVE} {TONE.format(freq=1500, rate=44100, channels=2)} ! avenc_aac ! rtpmp4gpay name=pay1 pt=97",
    "/opus": f"{LIVE} {TONE.format(freq=1500, rate=48000, channels=2)} ! opusenc ! rtpopuspay name=pay1 pt=98",
    "/quiet": f"{LIVE} {ALAW.format(' ! valve name=valve')}",
    "/nosetup": f"{LIVE} {ALAW.format('')}",
}

RTP = "application/x-rtp,media=audio,payload={pt},clock-rate={rate},encoding-name={name}"
EAR = "( capsfilter caps={caps} name=depay_backchannel ! rtp{codec}depay ! {law} ! filesink name=ear async=false"
EARS = {
    "/hears-pcmu": ("pcmu", "mulawdec", RTP.format(pt=0, rate=8000, name="PCMU")),
    "/hears-pcma": ("pcma", "alawdec", RTP.format(pt=8, rate=8000, name="PCMA")),
    "/hears-wide": ("pcma", "alawdec", RTP.format(pt=97, rate=16000, name="PCMA")),
}


class SlowFactory(GstRtspServer.RTSPMediaFactory):
    """Makes its stream after a while; each client has a thread of its own, so the others do not wait."""

    def __init__(self, seconds):
        super().__init__()
        self.seconds = seconds

    def do_create_element(self, url):
        time.sleep(self.seconds)
        return Gst.parse_launch(f"( {STREAMS['/live']} )")


def change_size(_factory, media):
    sizes = ((320, 240), (176, 144), (640, 360))
    count = 0

    def change():
        nonlocal count
        count += 1
        width, height = sizes[count % len(sizes)]
        caps = f"video/x-raw,format=I420,width={width},height={height},framerate=25/1"
        media.get_element().get_by_name("size").set_property("caps", Gst.Caps.from_string(caps))
        return True

    every_second(media, change)


def every_second(media, change):
    timer = GLib.timeout_add(1000, change)
    media.connect("unprepared", lambda _media: GLib.source_remove(timer))


def interrupt_sound(_factory, media):
    def change():
        valve = media.get_element().get_by_name("valve")
        valve.set_property("drop", not valve.get_property("drop"))
        return True

    every_second(media, change)


def refuse_sound(client, context):
    """A camera that describes its sound and sets up its video alone."""
    path = context.uri.abspath if context.uri else ""
    refused = path.startswith("/nosetup") and "stream=1" in path
    return GstRtsp.RTSPStatusCode.UNSUPPORTED_MEDIA_TYPE if refused else GstRtsp.RTSPStatusCode.OK


def make_ear(path, folder):
    """A camera's stream, and beside it what writes down what is said to the camera."""
    codec, law, caps = EARS[path]
    factory = GstRtspServer.RTSPOnvifMediaFactory()
    factory.set_media_gtype(GstRtspServer.RTSPOnvifMedia.__gtype__)
    # Who talks need not set up the pictures, and pictures that lead nowhere would end the whole.
    factory.set_launch(f"( {LIVE.replace('! rtph264pay', '! tee allow-not-linked=true ! rtph264pay')} )")
    ear = EAR.format(caps=caps, codec=codec, law=law)
    factory.set_backchannel_launch(f"{ear} sync=false buffer-mode=unbuffered location={folder}{path}.raw )")
    return factory


def require_password(server, user, password, method):
    auth = GstRtspServer.RTSPAuth()
    auth.set_supported_methods(method)
    token = GstRtspServer.RTSPToken()
    token.set_string("media.factory.role", "user")
    if method == GstRtsp.RTSPAuthMethod.BASIC:
        auth.add_basic(GstRtspServer.RTSPAuth.make_basic(user, password), token)
    else:
        auth.add_digest(user, password, token)
    server.set_auth(auth)


def allow_users(factory):
    permissions = GstRtspServer.RTSPPermissions()
    permissions.add_permission_for_role("user", "media.factory.access", True)
    permissions.add_permission_for_role("user", "media.factory.construct", True)
    factory.set_permissions(permissions)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--port", default="0", help="0 takes a free one")
    parser.add_argument("--rate", type=int, default=25, help="pictures a second")
    parser.add_argument("--user")
    parser.add_argument("--password", default="")
    parser.add_argument("--auth", choices=("basic", "digest"), default="digest")
    parser.add_argument("--ears", metavar="FOLDER")
    options = parser.parse_args()

    Gst.init(None)
    loop = GLib.MainLoop()
    server = GstRtspServer.RTSPOnvifServer() if options.ears else GstRtspServer.RTSPServer()
    server.set_address("127.0.0.1")
    server.set_service(options.port)
    server.get_thread_pool().set_max_threads(-1)

    factories = {}
    for path, description in STREAMS.items():
        factories[path] = GstRtspServer.RTSPMediaFactory()
        description = description.replace("framerate=25/1", f"framerate={options.rate}/1")
        factories[path].set_launch(f"( {description} )")
    for path in EARS if options.ears else ():
        factories[path] = make_ear(path, options.ears)
    factories["/resize"].connect("media-configure", change_size)
    factories["/quiet"].connect("media-configure", interrupt_sound)
    server.connect("client-connected", lambda _server, client: client.connect("pre-setup-request", refuse_sound))
    factories["/hang"] = SlowFactory(3600)
    factories["/slow"] = SlowFactory(1)
    for path, factory in factories.items():
        # A client that comes back at once would meet a shared stream that is just being ended.
        factory.set_shared(path not in ("/own", "/nosetup") and path not in EARS)
        if options.user:
            allow_users(factory)
        server.get_mount_points().add_factory(path, factory)
    if options.user:
        methods = {"basic": GstRtsp.RTSPAuthMethod.BASIC, "digest": GstRtsp.RTSPAuthMethod.DIGEST}
        require_password(server, options.user, options.password, methods[options.auth])

    if server.attach(None) == 0:
        sys.exit("the port is taken")
    print(f"PORT {server.get_bound_port()}", flush=True)

    def until_input_ends():
        sys.stdin.read()
        loop.quit()

    threading.Thread(target=until_input_ends, daemon=True).start()
    loop.run()


main()
